#include "checker/themereference.h"

#include "checker/themekeys.h"

#include <QtCore/QStringList>

namespace {

struct Section
{
    ThemeKey::Place place;
    const char *heading;
};

const Section sections[] = {
    { ThemeKey::Document, "Keys of the document" },
    { ThemeKey::Scope, "Keys of `global` and of classes" },
    { ThemeKey::Colors, "Keys of `colors`" },
    { ThemeKey::Fonts, "Keys of `fonts`" },
    { ThemeKey::Font, "Keys of one font" },
};

QString typeCell(const ThemeKey &key)
{
    QString result = ThemeKeys::typeName(key.type);
    if (!key.unit.isEmpty())
        result += QStringLiteral(", in ") + key.unit;
    if (!key.words.isEmpty())
        result += QStringLiteral(": `%1`").arg(key.words.join(QLatin1String("`, `")));
    return result;
}

} // namespace

QString themeReference()
{
    QStringList lines;
    for (const Section &section : sections) {
        if (!lines.isEmpty())
            lines.append(QString());
        lines += { QStringLiteral("### %1").arg(QLatin1String(section.heading)), QString(),
                   QStringLiteral("| Key | Type | Meaning | When missing | A wrong value |"),
                   QStringLiteral("|---|---|---|---|---|") };
        const QVector<ThemeKey> keys = ThemeKeys::at(section.place);
        for (const ThemeKey &key : keys) {
            const QString name = key.name.isEmpty() ? QStringLiteral("any other")
                                                    : QStringLiteral("`%1`").arg(key.name);
            lines.append(QStringLiteral("| %1 |").arg(
                    QStringList{ name, typeCell(key), key.meaning, key.absence, key.mistake }.join(
                            QLatin1String(" | "))));
        }
    }
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}
