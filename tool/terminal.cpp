#include "tool/terminal.h"

#include "tool/command.h"

#include <QtCore/QtGlobal>

#include <cstdio>
#if defined(Q_OS_UNIX)
#include <fcntl.h>
#include <unistd.h>
#else
#include <io.h>
#endif

namespace {

bool isTerminal(FILE *stream)
{
#if defined(Q_OS_UNIX)
    return isatty(fileno(stream)) != 0;
#else
    return _isatty(_fileno(stream)) != 0;
#endif
}

} // namespace

QCommandLineOption Terminal::colorOption()
{
    return QCommandLineOption(QStringLiteral("color"),
                              QStringLiteral("Prints in colors: auto (on a terminal), always or "
                                             "never. Default: auto."),
                              QStringLiteral("WHEN"), QStringLiteral("auto"));
}

QString Terminal::colorProblem(const QString &choice)
{
    const QStringList choices{ QStringLiteral("auto"), QStringLiteral("always"),
                               QStringLiteral("never") };
    return choices.contains(choice) ? QString()
                                    : notOneOf(QStringLiteral("value of --color"), choice, choices);
}

bool Terminal::wantsColors(const QString &choice)
{
    if (choice != QLatin1String("auto"))
        return choice == QLatin1String("always");
    return isPresent() && qEnvironmentVariableIsEmpty("NO_COLOR") && qgetenv("TERM") != "dumb";
}

bool Terminal::isPresent()
{
    return isTerminal(stdout);
}

bool Terminal::isPresentForErrors()
{
    return isTerminal(stderr);
}

void Terminal::occupyStandardStreams()
{
#if defined(Q_OS_UNIX)
    // The other way round than they are used; the lowest number that is free is taken.
    for (const int stream : { STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO }) {
        if (fcntl(stream, F_GETFD) == -1)
            open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
#endif
}
