#include "tool/command.h"

#include "checker/codes.h"
#include "checker/words.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

/// Why something could not be printed; 0 if all was.
int printError = 0;

bool write(FILE *stream, const QString &text)
{
    const QByteArray bytes = text.toUtf8();
    return std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stream) == size_t(bytes.size())
            && std::fflush(stream) == 0;
}

} // namespace

QString orList(const QStringList &words)
{
    return words.mid(0, words.size() - 1).join(QLatin1String(", ")) + QStringLiteral(" or ")
            + words.last();
}

QString notOneOf(const QString &what, const QString &value, const QStringList &words)
{
    return QStringLiteral("the %1 \"%2\" is not %3").arg(what, value, orList(words));
}

QString noSuchCode(const QString &name)
{
    return QStringLiteral("there is no code \"%1\"").arg(name) + didYouMean(name, Codes::names());
}

QString didYouMean(const QString &name, const QStringList &candidates)
{
    const QString nearest = Words::nearest(name, candidates);
    return nearest.isEmpty() ? QString() : QStringLiteral("; did you mean %1?").arg(nearest);
}

void print(const QString &text)
{
    if (!write(stdout, text) && printError == 0)
        printError = errno;
}

bool isOutputLost()
{
    return printError != 0;
}

int exitCodeOf(int result)
{
    if (!isOutputLost())
        return result;
    write(stderr,
          QStringLiteral(TOOL_NAME ": the output can't be written: %1\n")
                  .arg(QString::fromLocal8Bit(std::strerror(printError))));
    return UsageError;
}

Command::Command(const QString &name, const QString &description)
    : m_name(name)
    , m_help(QStringList{ QStringLiteral("h"), QStringLiteral("help") },
             QStringLiteral("Shows this text."))
{
    m_parser.setApplicationDescription(description);
    m_parser.addOption(m_help);
}

bool Command::parse(const QStringList &arguments)
{
    if (!m_parser.parse(QStringList(QStringLiteral(TOOL_NAME " ") + m_name) + arguments)) {
        m_exitCode = refuse(Words::unsentenced(m_parser.errorText()));
        return false;
    }
    if (m_parser.isSet(m_help)) {
        // The parser shows the program without the subcommand.
        QString text = m_parser.helpText();
        const auto lineEnd = text.indexOf(QLatin1Char('\n'));
        const auto options = text.indexOf(QLatin1String(" [options]"));
        if (options >= 0 && options < lineEnd)
            text = QStringLiteral("Usage: " TOOL_NAME " ") + m_name + text.mid(options);
        print(text);
        m_exitCode = Success;
        return false;
    }
    return true;
}

int Command::complain(const QString &message) const
{
    write(stderr, QStringLiteral(TOOL_NAME " %1: %2\n").arg(m_name, Words::harmless(message)));
    return UsageError;
}

int Command::refuse(const QString &message) const
{
    complain(message);
    write(stderr, QStringLiteral("Try `" TOOL_NAME " %1 --help`.\n").arg(m_name));
    return UsageError;
}
