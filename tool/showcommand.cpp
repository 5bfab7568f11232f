#include "checker/effectivevalues.h"
#include "checker/valueformats.h"
#include "tool/command.h"
#include "tool/subcommands.h"
#include "tool/themeargument.h"
#include "tool/valueoptions.h"

#include <algorithm>

namespace {

const QLatin1String classPrefix("class/");

/// Leaves only the values of \a key, which is a value's or that of a group of values.
void select(const QString &key, EffectiveValues *values)
{
    const QString group = key + QLatin1Char('/');
    const auto isOther = [&](const EffectiveValue &value) {
        return value.key != key && !value.key.startsWith(group);
    };
    values->values.erase(std::remove_if(values->values.begin(), values->values.end(), isOther),
                         values->values.end());
}

QString formatted(const EffectiveValues &values, const QString &format, bool colored)
{
    if (format == QLatin1String("json"))
        return ValueFormats::asJson(values);
    if (format == QLatin1String("css"))
        return ValueFormats::asCss(values);
    if (format == QLatin1String("qml"))
        return ValueFormats::asQml(values);
    return ValueFormats::asText(values, colored);
}

} // namespace

int runShow(const QStringList &arguments)
{
    Command command(
            QStringLiteral("show"),
            QStringLiteral(
                    "Shows the values of a theme as an item reads them, and where each comes "
                    "from.\n\nTHEME is a theme file, or the title of a theme in the "
                    "folder of --folder. Keys are paths of properties, as in "
                    "colors/foreground, fonts/h1Font/pointSize, radius; styles/NAME is the "
                    "file of a style, class/PATH any value in a class of the item. Weights are "
                    "names in text, and numbers from 1 to 1000 in json and css: 400 is Normal, "
                    "700 Bold."));
    QCommandLineParser &parser = command.parser();
    const ValueOptions options(&parser,
                               { QStringLiteral("text"), QStringLiteral("json"),
                                 QStringLiteral("css"), QStringLiteral("qml") });
    const QCommandLineOption key(QStringLiteral("key"),
                                 QStringLiteral("Shows only that value, or group of values."),
                                 QStringLiteral("PATH"));
    parser.addOption(key);
    parser.addPositionalArgument(QStringLiteral("THEME"), QStringLiteral("The theme."));
    if (!command.parse(arguments))
        return command.exitCode();
    const QStringList themes = parser.positionalArguments();
    if (themes.size() != 1)
        return command.refuse(QStringLiteral("one theme has to be named"));
    const QString wrong = options.problem();
    if (!wrong.isEmpty())
        return command.refuse(wrong);

    const ThemeArgument argument(themes.first(), options.folder());
    if (!argument.problem().isEmpty())
        command.complain(argument.problem());
    if (!argument.theme())
        return UsageError;
    const QString classnames = options.classnames();
    EffectiveValues values = EffectiveValues::of(argument.folder(), argument.theme(), classnames);
    for (const QString &name : std::as_const(values.missingClasses))
        command.complain(QStringLiteral("the theme has no class \"%1\"").arg(name)
                         + didYouMean(name, values.themeClasses));
    if (parser.isSet(key)) {
        const QString path = parser.value(key);
        select(path, &values);
        if (values.values.isEmpty() && path.startsWith(classPrefix)) {
            const EffectiveValue value = EffectiveValues::classValue(
                    argument.folder(), argument.theme(), classnames, path.mid(classPrefix.size()));
            if (value.origin.kind == ValueOrigin::Written)
                values.values.append(value);
        }
        if (values.values.isEmpty())
            return command.complain(
                    QStringLiteral("an item with these classes has no value \"%1\"").arg(path));
    }
    print(formatted(values, options.format(), options.isColored()));
    return argument.problem().isEmpty() ? Success : ProblemsFound;
}
