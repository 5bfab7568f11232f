#include "checker/effectivevalues.h"
#include "checker/valueformats.h"
#include "tool/command.h"
#include "tool/subcommands.h"
#include "tool/terminal.h"
#include "tool/themeargument.h"

int runDiff(const QStringList &arguments)
{
    Command command(
            QStringLiteral("diff"),
            QStringLiteral("Shows what an item reads differently in two themes.\n\nA and B "
                           "are theme files, or titles of themes in the folder of "
                           "--folder. Exit code: 0 when the themes are the same to an item, "
                           "1 when they differ or are broken, 2 on wrong use."));
    QCommandLineParser &parser = command.parser();
    const QCommandLineOption classes(QStringLiteral("class"),
                                     QStringLiteral("The item's class names, separated by blanks."),
                                     QStringLiteral("NAMES"));
    const QCommandLineOption format(QStringLiteral("format"),
                                    QStringLiteral("text (default) or json."),
                                    QStringLiteral("FORMAT"), QStringLiteral("text"));
    const QCommandLineOption folder(QStringLiteral("folder"),
                                    QStringLiteral("Where themes are looked for by title. Default: "
                                                   "the working folder."),
                                    QStringLiteral("DIR"), QStringLiteral("."));
    const QCommandLineOption color = Terminal::colorOption();
    parser.addOptions({ classes, format, folder, color });
    parser.addPositionalArgument(QStringLiteral("A"), QStringLiteral("The one theme."));
    parser.addPositionalArgument(QStringLiteral("B"), QStringLiteral("The other theme."));
    if (!command.parse(arguments))
        return command.exitCode();
    const QStringList themes = parser.positionalArguments();
    if (themes.size() != 2)
        return command.refuse(QStringLiteral("Two themes have to be named."));
    const bool isJson = parser.value(format) == QLatin1String("json");
    if (!isJson && parser.value(format) != QLatin1String("text"))
        return command.refuse(
                QStringLiteral("There is no format \"%1\".").arg(parser.value(format)));
    if (!Terminal::isColorChoice(parser.value(color)))
        return command.refuse(QStringLiteral("--color takes auto, always or never."));

    // One after the other: themes of different folders must not find each other.
    EffectiveValues sides[2];
    bool isBroken = false;
    for (int side = 0; side < 2; ++side) {
        const ThemeArgument argument(themes.at(side), parser.value(folder));
        if (!argument.problem().isEmpty())
            command.complain(argument.problem());
        if (!argument.theme())
            return UsageError;
        isBroken = isBroken || !argument.problem().isEmpty();
        sides[side] = EffectiveValues::of(argument.folder(), argument.theme(),
                                          parser.value(classes));
    }
    const bool isColored = Terminal::wantsColors(parser.value(color));
    print(isJson ? ValueFormats::differencesAsJson(sides[0], sides[1])
                 : ValueFormats::differencesAsText(sides[0], sides[1], isColored));
    const bool areSame = ValueFormats::differences(sides[0], sides[1]).isEmpty();
    return areSame && !isBroken ? Success : ProblemsFound;
}
