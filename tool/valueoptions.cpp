#include "tool/valueoptions.h"

#include "tool/command.h"
#include "tool/terminal.h"

ValueOptions::ValueOptions(QCommandLineParser *parser, const QStringList &formats)
    : m_parser(parser)
    , m_formats(formats)
    , m_classes(QStringLiteral("class"),
                QStringLiteral("The item's class names, separated by blanks."),
                QStringLiteral("NAMES"))
    , m_format(QStringLiteral("format"),
               QStringLiteral("Prints %1. Default: %2.").arg(orList(formats), formats.first()),
               QStringLiteral("FORMAT"), formats.first())
    , m_folder(QStringLiteral("folder"),
               QStringLiteral("Where themes are looked for by title. Default: the working folder."),
               QStringLiteral("DIR"), QStringLiteral("."))
    , m_color(Terminal::colorOption())
{
    parser->addOptions({ m_classes, m_format, m_folder, m_color });
}

QString ValueOptions::problem() const
{
    if (!m_formats.contains(format()))
        return notOneOf(QStringLiteral("format"), format(), m_formats);
    return Terminal::colorProblem(m_parser->value(m_color));
}

bool ValueOptions::isColored() const
{
    return Terminal::wantsColors(m_parser->value(m_color));
}
