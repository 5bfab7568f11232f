#include "gallery/commandline.h"

#include "checker/words.h"

CommandLine::CommandLine()
    : m_help(QStringList{ QStringLiteral("h"), QStringLiteral("help") },
             QStringLiteral("Shows this text."))
    , m_version(QStringList{ QStringLiteral("v"), QStringLiteral("version") },
                QStringLiteral("Shows the version."))
    , m_shot(QStringLiteral("shot"),
             QStringLiteral(
                     "Writes two pictures of each theme into DIR, its values and the controls, "
                     "named after the theme file, and prints their paths. Needs no "
                     "display."),
             QStringLiteral("DIR"))
    , m_theme(QStringLiteral("theme"), QStringLiteral("Begins with the theme of that title."),
              QStringLiteral("TITLE"))
{
    m_parser.setApplicationDescription(QStringLiteral(
            "Shows a folder of themes, and follows the edits of the theme shown.\n"
            "\n"
            "Click a theme or press Up, Down or its number to switch. Page Down turns to\n"
            "the controls, Page Up back.\n"
            "\n"
            "Exit codes:\n"
            "  0  all went well\n"
            "  1  wrong arguments, no display, or --shot could not make a picture of\n"
            "     each theme\n"
            "  2  the folder is missing, holds no theme, or not the one asked for"));
    m_parser.addOptions({ m_help, m_version, m_shot, m_theme });
    m_parser.addPositionalArgument(QStringLiteral("folder"),
                                   QStringLiteral("Folder of *.thm files. Default: the bundled "
                                                  "themes."),
                                   QStringLiteral("[folder]"));
}

bool CommandLine::parse(const QStringList &arguments)
{
    m_error.clear();
    if (!m_parser.parse(arguments))
        m_error = Words::unsentenced(m_parser.errorText());
    else if (m_parser.positionalArguments().size() > 1)
        m_error = QStringLiteral("only one folder can be shown");
    else if (m_parser.isSet(m_shot) && shotFolder().isEmpty())
        m_error = QStringLiteral("the folder of --shot is empty");
    return m_error.isEmpty();
}

QString CommandLine::errorText() const
{
    return m_error;
}

QString CommandLine::helpText() const
{
    return m_parser.helpText();
}

bool CommandLine::helpWanted() const
{
    return m_parser.isSet(m_help);
}

bool CommandLine::versionWanted() const
{
    return m_parser.isSet(m_version);
}

QString CommandLine::shotFolder() const
{
    return m_parser.value(m_shot);
}

QString CommandLine::theme() const
{
    return m_parser.value(m_theme);
}

QString CommandLine::folder() const
{
    return m_parser.positionalArguments().value(0);
}
