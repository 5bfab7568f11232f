#include "checker/themereference.h"
#include "checker/themeschema.h"
#include "tool/command.h"
#include "tool/subcommands.h"

#include <QtCore/QJsonDocument>

int runSchema(const QStringList &arguments)
{
    Command command(
            QStringLiteral("schema"),
            QStringLiteral("Prints the JSON Schema (draft 2020-12) of theme files, by which "
                           "editors complete and check them."));
    QCommandLineParser &parser = command.parser();
    const QCommandLineOption format(
            QStringLiteral("format"),
            QStringLiteral("json (default), or markdown for the same keys as "
                           "tables to read."),
            QStringLiteral("FORMAT"), QStringLiteral("json"));
    parser.addOption(format);
    if (!command.parse(arguments))
        return command.exitCode();
    if (!parser.positionalArguments().isEmpty())
        return command.refuse(QStringLiteral("there is nothing to name"));
    const QStringList formats{ QStringLiteral("json"), QStringLiteral("markdown") };
    if (!formats.contains(parser.value(format)))
        return command.refuse(notOneOf(QStringLiteral("format"), parser.value(format), formats));
    if (parser.value(format) == QLatin1String("json"))
        print(QString::fromUtf8(QJsonDocument(themeSchema()).toJson()));
    else
        print(themeReference());
    return Success;
}
