#include "checker/startertheme.h"
#include "tool/command.h"
#include "tool/subcommands.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace {

/// The file name that goes with \a title: its letters and digits in lower case, joined by hyphens.
QString fileNameOf(const QString &title)
{
    const QString letters = title.toLower();
    QString name;
    for (const QChar letter : letters) {
        if (letter.isLetterOrNumber())
            name += letter;
        else if (!name.isEmpty() && !name.endsWith(QLatin1Char('-')))
            name += QLatin1Char('-');
    }
    while (name.endsWith(QLatin1Char('-')))
        name.chop(1);
    return name.isEmpty() ? QString() : name + QLatin1String(".thm");
}

/// Whether \a color can be the ground of other colors.
bool isUsable(const QColor &color)
{
    return color.isValid() && color.alpha() == 255;
}

} // namespace

int runNew(const QStringList &arguments)
{
    Command command(QStringLiteral("new"),
                    QStringLiteral("Writes a complete theme to begin with and prints its path. All "
                                   "its texts have the contrast that WCAG 2 asks for (AA). A file "
                                   "that exists is never overwritten."));
    QCommandLineParser &parser = command.parser();
    const QCommandLineOption background(QStringLiteral("background"),
                                        QStringLiteral("The color of the page. Default: #f6f5f2."),
                                        QStringLiteral("COLOR"), QStringLiteral("#f6f5f2"));
    const QCommandLineOption accent(
            QStringLiteral("accent"),
            QStringLiteral("The color of what stands out, of which the other "
                           "colors have a touch. Default: #1f6f8b."),
            QStringLiteral("COLOR"), QStringLiteral("#1f6f8b"));
    const QCommandLineOption output(
            QStringList{ QStringLiteral("o"), QStringLiteral("output") },
            QStringLiteral(
                    "Where to write. Default: NAME in lower case with .thm behind it, in the "
                    "working folder."),
            QStringLiteral("FILE"));
    parser.addOptions({ background, accent, output });
    parser.addPositionalArgument(
            QStringLiteral("NAME"),
            QStringLiteral("The title of the theme, as applications show it in "
                           "a list of themes. The file is named after it."));
    if (!command.parse(arguments))
        return command.exitCode();
    const QStringList names = parser.positionalArguments();
    if (names.size() != 1 || names.first().isEmpty())
        return command.refuse(QStringLiteral("one name has to be given"));
    for (const QCommandLineOption &option : { background, accent }) {
        if (!isUsable(QColor(parser.value(option))))
            return command.refuse(QStringLiteral("--%1 takes an opaque color, as in \"#1f6f8b\"")
                                          .arg(option.names().constFirst()));
    }
    const QString path = parser.isSet(output) ? parser.value(output) : fileNameOf(names.first());
    if (path.isEmpty())
        return command.refuse(
                QStringLiteral("the name makes no file name; --output FILE gives one"));

    QFile file(path);
    // Asked for in one step, so that nothing is lost to a file that appears meanwhile.
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return command.complain(
                QFileInfo::exists(path)
                        ? QStringLiteral("%1 exists; nothing was written").arg(path)
                        : QStringLiteral("%1 can't be written: %2").arg(path, file.errorString()));
    const QByteArray text = starterTheme(names.first(), QColor(parser.value(background)),
                                         QColor(parser.value(accent)));
    if (file.write(text) != text.size() || !file.flush()) {
        const QString reason = file.errorString();
        file.remove();
        return command.complain(QStringLiteral("%1 can't be written: %2").arg(path, reason));
    }
    print(path + QLatin1Char('\n'));
    return Success;
}
