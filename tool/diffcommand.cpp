#include "checker/effectivevalues.h"
#include "checker/valueformats.h"
#include "tool/command.h"
#include "tool/subcommands.h"
#include "tool/themeargument.h"
#include "tool/valueoptions.h"

int runDiff(const QStringList &arguments)
{
    Command command(
            QStringLiteral("diff"),
            QStringLiteral("Shows what an item reads differently in two themes.\n\nA and B "
                           "are theme files, or titles of themes in the folder of "
                           "--folder. Exit code: 0 when the themes are the same to an item, "
                           "1 when they differ or are broken, 2 on wrong use."));
    QCommandLineParser &parser = command.parser();
    const ValueOptions options(&parser, { QStringLiteral("text"), QStringLiteral("json") });
    parser.addPositionalArgument(QStringLiteral("A"), QStringLiteral("The one theme."));
    parser.addPositionalArgument(QStringLiteral("B"), QStringLiteral("The other theme."));
    if (!command.parse(arguments))
        return command.exitCode();
    const QStringList themes = parser.positionalArguments();
    if (themes.size() != 2)
        return command.refuse(QStringLiteral("two themes have to be named"));
    const QString wrong = options.problem();
    if (!wrong.isEmpty())
        return command.refuse(wrong);

    // One after the other: themes of different folders must not find each other.
    EffectiveValues sides[2];
    bool isBroken = false;
    for (int side = 0; side < 2; ++side) {
        const ThemeArgument argument(themes.at(side), options.folder());
        if (!argument.problem().isEmpty())
            command.complain(argument.problem());
        if (!argument.theme())
            return UsageError;
        isBroken = isBroken || !argument.problem().isEmpty();
        sides[side] = EffectiveValues::of(argument.folder(), argument.theme(),
                                          options.classnames());
    }
    print(options.format() == QLatin1String("json")
                  ? ValueFormats::differencesAsJson(sides[0], sides[1])
                  : ValueFormats::differencesAsText(sides[0], sides[1], options.isColored()));
    const bool areSame = ValueFormats::differences(sides[0], sides[1]).isEmpty();
    return areSame && !isBroken ? Success : ProblemsFound;
}
