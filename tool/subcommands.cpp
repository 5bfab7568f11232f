#include "tool/subcommands.h"

#include "checker/words.h"
#include "tool/command.h"

#include <cstdio>

namespace {

QString helpText()
{
    QString text = QStringLiteral("Usage: " TOOL_NAME " SUBCOMMAND [options] [arguments]\n"
                                  "Tells the authors of themes what their themes do and what is "
                                  "wrong with them.\n\nSubcommands:\n");
    for (const Subcommand &subcommand : subcommands())
        text += QStringLiteral("  %1 %2\n").arg(subcommand.name, -10).arg(subcommand.summary);
    return text
            + QStringLiteral("\n`" TOOL_NAME " SUBCOMMAND --help` tells more.\n\nOptions:\n"
                             "  -h, --help     Shows this text.\n"
                             "  -v, --version  Shows the version.\n");
}

int refuse(const QString &message)
{
    std::fputs(qPrintable(QStringLiteral(TOOL_NAME ": %1\nTry `" TOOL_NAME " --help`.\n")
                                  .arg(Words::harmless(message))),
               stderr);
    return UsageError;
}

} // namespace

const QVector<Subcommand> &subcommands()
{
    static const QVector<Subcommand> table = {
        { QStringLiteral("check"), QStringLiteral("Tells what is wrong with themes."), runCheck },
        { QStringLiteral("explain"), QStringLiteral("Explains a code of `" TOOL_NAME " check`."),
          runExplain },
        { QStringLiteral("show"), QStringLiteral("Shows a theme's values and their origins."),
          runShow },
        { QStringLiteral("diff"), QStringLiteral("Shows what differs between two themes."),
          runDiff },
        { QStringLiteral("new"), QStringLiteral("Writes a theme to begin with."), runNew },
        { QStringLiteral("schema"), QStringLiteral("Prints the JSON Schema of theme files."),
          runSchema },
#ifdef TOOL_HAS_GALLERY
        { QStringLiteral("shot"), QStringLiteral("Writes pictures of themes."), runShot },
#endif
    };
    return table;
}

int runTool(const QStringList &arguments)
{
    const QString word = arguments.value(1);
    if (word.isEmpty())
        return refuse(QStringLiteral("there is no subcommand"));
    if (word == QLatin1String("-h") || word == QLatin1String("--help")) {
        print(helpText());
        return exitCodeOf(Success);
    }
    if (word == QLatin1String("-v") || word == QLatin1String("--version")) {
        print(QStringLiteral(TOOL_NAME " " TOOL_VERSION "\n"));
        return exitCodeOf(Success);
    }
    for (const Subcommand &subcommand : subcommands()) {
        if (subcommand.name == word)
            return exitCodeOf(subcommand.run(arguments.mid(2)));
    }
    return refuse(QStringLiteral("there is no subcommand \"%1\"").arg(word));
}
