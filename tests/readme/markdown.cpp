#include "readme/markdown.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

namespace {

const QLatin1String fence("```");
const QLatin1String indentation("    ");

} // namespace

Markdown::Markdown(const QString &path)
{
    QFile file(QStringLiteral(TAVOLINS_SOURCE_DIR "/") + path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("can't read %s", qPrintable(path));
    const QStringList lines = QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'));

    QString heading;
    bool isFenced = false;
    bool isIndented = false;
    bool isAfterBlank = true;
    for (const QString &line : lines) {
        if (line.startsWith(fence)) {
            isFenced = !isFenced;
            isIndented = false;
            if (isFenced)
                m_blocks.append({ heading, line.mid(fence.size()), QString() });
            continue;
        }
        if (isFenced) {
            m_blocks.last().code += line + QLatin1Char('\n');
            continue;
        }
        m_prose += line + QLatin1Char('\n');
        // Elsewhere an indented line goes on with a list.
        if (line.startsWith(indentation) && (isIndented || isAfterBlank)) {
            if (!isIndented)
                m_blocks.append({ heading, QString(), QString() });
            isIndented = true;
            m_blocks.last().code += line.mid(indentation.size()) + QLatin1Char('\n');
        } else {
            isIndented = false;
        }
        isAfterBlank = line.isEmpty();
        if (line.startsWith(QLatin1Char('#'))) {
            heading = line.section(QLatin1Char(' '), 1);
            m_headings.append(heading);
        }
    }
}

QList<Markdown::Block> Markdown::blocks() const
{
    return m_blocks;
}

QString Markdown::only(const QString &language) const
{
    QStringList found;
    for (const Block &block : m_blocks) {
        if (block.language == language)
            found.append(block.code);
    }
    return found.size() == 1 ? found.first() : QString();
}

QList<QStringList> Markdown::table(const QString &firstHeading) const
{
    QList<QStringList> rows;
    bool isInside = false;
    const QStringList lines = m_prose.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (!line.startsWith(QLatin1Char('|'))) {
            isInside = false;
            continue;
        }
        QStringList cells = line.split(QLatin1Char('|'));
        for (QString &cell : cells)
            cell = cell.trimmed();
        cells = cells.mid(1, cells.size() - 2);
        if (isInside && !cells.first().startsWith(QLatin1String("---")))
            rows.append(cells);
        isInside = isInside || cells.first() == firstHeading;
    }
    return rows;
}

QStringList Markdown::codeIn(const QString &text)
{
    QStringList code;
    const QRegularExpression span(QStringLiteral("`([^`]+)`"));
    for (auto match = span.globalMatch(text); match.hasNext();)
        code.append(match.next().captured(1));
    return code;
}

QStringList Markdown::headings() const
{
    return m_headings;
}

QString Markdown::prose() const
{
    return m_prose;
}
