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
        return command.refuse(QStringLiteral("There is nothing to name."));
    if (parser.value(format) == QLatin1String("json"))
        print(QString::fromUtf8(QJsonDocument(themeSchema()).toJson()));
    else if (parser.value(format) == QLatin1String("markdown"))
        print(themeReference());
    else
        return command.refuse(
                QStringLiteral("There is no format \"%1\".").arg(parser.value(format)));
    return Success;
}
