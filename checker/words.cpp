#include "checker/words.h"

#include <QtCore/QVector>

#include <algorithm>

namespace {

const int longestQuote = 60;
const int longestWord = 40;

/// How many letters have to be inserted, left out, replaced or swapped with their neighbour.
int distance(const QString &a, const QString &b)
{
    QVector<QVector<int>> steps(a.size() + 1, QVector<int>(b.size() + 1));
    for (int i = 0; i <= a.size(); ++i) {
        for (int j = 0; j <= b.size(); ++j) {
            if (i == 0 || j == 0) {
                steps[i][j] = i + j;
                continue;
            }
            const int replaced = steps[i - 1][j - 1] + (a.at(i - 1) == b.at(j - 1) ? 0 : 1);
            int best = std::min({ replaced, steps[i - 1][j] + 1, steps[i][j - 1] + 1 });
            if (i > 1 && j > 1 && a.at(i - 1) == b.at(j - 2) && a.at(i - 2) == b.at(j - 1))
                best = std::min(best, steps[i - 2][j - 2] + 1);
            steps[i][j] = best;
        }
    }
    return steps[a.size()][b.size()];
}

QString plain(QString word)
{
    for (const char separator : { '-', '_', ' ' })
        word.remove(QLatin1Char(separator));
    return word.toLower();
}

} // namespace

QString Words::quoted(const QString &text)
{
    if (text.size() <= longestQuote)
        return QLatin1Char('`') + text + QLatin1Char('`');
    int length = longestQuote;
    if (text.at(length - 1).isHighSurrogate())
        --length;
    return QLatin1Char('`') + text.left(length) + QStringLiteral("…`");
}

QString Words::quotedList(const QStringList &texts, int limit)
{
    const QStringList shown = texts.mid(0, limit);
    QStringList parts;
    for (const QString &text : shown)
        parts.append(quoted(text));
    QString list = parts.join(QLatin1String(", "));
    if (texts.size() > limit)
        list += QStringLiteral(" and %1 more").arg(texts.size() - limit);
    return list;
}

QString Words::nearest(const QString &word, const QStringList &candidates)
{
    const QString wanted = plain(word);
    if (wanted.isEmpty() || word.size() > longestWord)
        return QString();
    QString best;
    // One letter in three may be wrong.
    int bestDistance = std::max(1, int(wanted.size()) / 3) + 1;
    for (const QString &candidate : candidates) {
        const QString known = plain(candidate);
        if (candidate == word || known.isEmpty() || known.size() > longestWord
            || qAbs(known.size() - wanted.size()) >= bestDistance)
            continue;
        const int steps = distance(wanted, known);
        if (steps < bestDistance) {
            best = candidate;
            bestDistance = steps;
        }
    }
    return best;
}

QString Words::harmless(const QString &text)
{
    QString result = text;
    for (QChar &character : result) {
        // Bidirectional controls would let a line read as another one.
        if (character.category() == QChar::Other_Control
            || character.category() == QChar::Other_Format)
            character = QChar::ReplacementCharacter;
    }
    return result;
}

QString Words::unsentenced(QString sentence)
{
    sentence[0] = sentence.at(0).toLower();
    if (sentence.endsWith(QLatin1Char('.')))
        sentence.chop(1);
    return sentence;
}

QString Words::number(double number)
{
    return QString::number(number, 'g', 6);
}

QString Words::counted(int count, const QString &noun)
{
    return QStringLiteral("%1 %2%3").arg(count).arg(noun,
                                                    count == 1 ? QString() : QStringLiteral("s"));
}
