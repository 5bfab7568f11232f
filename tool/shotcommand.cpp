#include "checker/loadedfolder.h"
#include "gallery/pictures.h"
#include "gallery/surroundings.h"
#include "tool/command.h"
#include "tool/subcommands.h"
#include "tool/terminal.h"

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>

#include <cstdio>

namespace {

/// Pictures beyond that many pixels a side can't be drawn.
const int largestSide = 16384;

/// Prints paths, complains, and shows on a terminal how far things are.
class TerminalReport : public PictureReport
{
public:
    explicit TerminalReport(const Command &command)
        : m_command(command)
    {
    }

    void begins(int number, int count, const QString &name) override
    {
        if (m_isTerminal)
            note(QStringLiteral("[%1/%2] %3").arg(number).arg(count).arg(name));
    }

    void wrote(const QString &path) override
    {
        clear();
        print(path + QLatin1Char('\n'));
    }

    void failed(const QString &problem) override
    {
        clear();
        m_command.complain(problem);
    }

private:
    static void note(const QString &text)
    {
        // Back to the beginning of the line, and what was there is gone.
        std::fputs(qPrintable(QStringLiteral("\r\033[K") + text), stderr);
        std::fflush(stderr);
    }

    void clear() const
    {
        if (m_isTerminal)
            note(QString());
    }

    const Command &m_command;
    const bool m_isTerminal = Terminal::isPresentForErrors();
};

/// The size that \a text means, as in "1280x740"; not valid when it means none.
QSize sizeOf(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("^(\\d{1,5})x(\\d{1,5})$"));
    const QRegularExpressionMatch match = form.match(text);
    return match.hasMatch() ? QSize(match.captured(1).toInt(), match.captured(2).toInt()) : QSize();
}

} // namespace

int runShot(const QStringList &arguments)
{
    Command command(
            QStringLiteral("shot"),
            QStringLiteral("Writes a picture of each theme of a folder and prints their "
                           "paths. Needs no display.\n\nA picture shows the gallery's window "
                           "and is named after the theme file. A theme that is broken gets no "
                           "picture and is told on standard error with the place of its mistake; "
                           "the others get theirs.\n\n"
                           "Exit codes:\n"
                           "  0  all pictures are written\n"
                           "  1  some are not\n"
                           "  2  wrong arguments, a folder without themes, or a title that none "
                           "has"));
    QCommandLineParser &parser = command.parser();
    const QCommandLineOption output(
            QStringList{ QStringLiteral("o"), QStringLiteral("output") },
            QStringLiteral("Where to write to; has to be given, and is created when it "
                           "does not exist."),
            QStringLiteral("DIR"));
    const QCommandLineOption size(QStringLiteral("size"),
                                  QStringLiteral("Width and height in pixels. Default: 1280x740."),
                                  QStringLiteral("WxH"));
    const QCommandLineOption title(QStringLiteral("theme"),
                                   QStringLiteral("Only the theme of that title."),
                                   QStringLiteral("TITLE"));
    parser.addOptions({ output, size, title });
    parser.addPositionalArgument(QStringLiteral("FOLDER"), QStringLiteral("Folder of themes."),
                                 QStringLiteral("FOLDER -o DIR"));
    if (!command.parse(arguments))
        return command.exitCode();
    const QStringList folders = parser.positionalArguments();
    if (folders.size() != 1)
        return command.refuse(QStringLiteral("one folder has to be named"));
    if (parser.value(output).isEmpty())
        return command.refuse(QStringLiteral("-o DIR has to be given"));
    PictureOrder order;
    order.themes = folders.first();
    order.destination = parser.value(output);
    order.title = parser.value(title);
    if (parser.isSet(size)) {
        order.size = sizeOf(parser.value(size));
        const QSize least = smallestPicture();
        if (order.size.width() < least.width() || order.size.height() < least.height()
            || order.size.width() > largestSide || order.size.height() > largestSide)
            return command.refuse(QStringLiteral("--size takes WIDTHxHEIGHT, from %1x%2 to %3x%3")
                                          .arg(least.width())
                                          .arg(least.height())
                                          .arg(largestSide));
    }
    if (!QDir(order.themes).exists())
        return command.complain(QStringLiteral("there is no folder \"%1\"").arg(order.themes));

    Surroundings::choosePlatform(true);
    const LoadedFolder themes(order.themes);
    if (themes.themes().isEmpty() && themes.leftOut().isEmpty())
        return command.complain(QStringLiteral("no theme in \"%1\"; themes are files named *.thm")
                                        .arg(order.themes));
    TerminalReport report(command);
    switch (writePictures(order, &report)) {
    case PictureResult::Written:
        return Success;
    case PictureResult::Incomplete:
        return ProblemsFound;
    case PictureResult::NoSuchTheme:
        break;
    }
    return UsageError;
}
