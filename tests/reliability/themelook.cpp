#include "reliability/themelook.h"

#include "theme/theme.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QStringList>
#include <QtGui/QFont>

namespace {

const char *const fontMembers[] = { "main", "alternate", "h1", "h2", "h3", "h4" };
const int seedLimit = 20;
const int classSeedDistance = 100;
const int warningForeground = 0;
const int quietBackground = 3;

QColor seedColor(int seed, int index)
{
    return QColor(seed % 256, (seed * 7 + index * 11) % 256, (index * 31 + 5) % 256);
}

int seedPointSize(int seed, int index)
{
    return 8 + seed % seedLimit + seedLimit * index;
}

/// Named so that no type has a property of that name.
QByteArray probeProperty(const QByteArray &name)
{
    return "shown" + name.left(1).toUpper() + name.mid(1);
}

QJsonObject scope(int seed)
{
    QJsonObject colors;
    for (int i = 0; i < colorNames().size(); ++i)
        colors.insert(QString::fromLatin1(colorNames().at(i)), seedColor(seed, i).name());
    QJsonObject fonts;
    for (int i = 0; i < fontNames().size(); ++i) {
        fonts.insert(QLatin1String(fontMembers[i]),
                     QJsonObject{ { QStringLiteral("pointSize"), seedPointSize(seed, i) } });
    }
    return { { QStringLiteral("colors"), colors },
             { QStringLiteral("fonts"), fonts },
             { QStringLiteral("radius"), seed } };
}

} // namespace

const QVector<QByteArray> &colorNames()
{
    static const QVector<QByteArray> names = { "foreground",        "lighterForeground",
                                               "darkerForeground",  "background",
                                               "lighterBackground", "darkerBackground",
                                               "selection" };
    return names;
}

const QVector<QByteArray> &fontNames()
{
    static const QVector<QByteArray> names = { "mainFont", "alternateFont", "h1Font",
                                               "h2Font",   "h3Font",        "h4Font" };
    return names;
}

QByteArray themeLookText(const QString &title, int seed)
{
    const int classSeed = seed + classSeedDistance;
    const QString foreground = seedColor(classSeed, warningForeground).name();
    const QString background = seedColor(classSeed, quietBackground).name();
    const QJsonObject warning{ { QStringLiteral("foreground"), foreground } };
    const QJsonObject quiet{ { QStringLiteral("background"), background } };
    const QJsonObject document{
        { QStringLiteral("title"), title },
        { QStringLiteral("global"), scope(seed) },
        { QStringLiteral("warning"), QJsonObject{ { QStringLiteral("colors"), warning } } },
        { QStringLiteral("quiet"),
          QJsonObject{ { QStringLiteral("colors"), quiet }, { QStringLiteral("radius"), 99 } } },
    };
    return QJsonDocument(document).toJson();
}

QByteArray probeText()
{
    QByteArray text;
    for (const QByteArray &name : colorNames())
        text += "property color " + probeProperty(name) + ": Theme.colors." + name + "\n";
    for (const QByteArray &name : fontNames())
        text += "property font " + probeProperty(name) + ": Theme.fonts." + name + "\n";
    return text + "property int shownRadius: Theme.radius\n";
}

ThemeLook ThemeLook::ofSeed(int seed)
{
    const qreal fontFactor = 0.75;
    ThemeLook look;
    for (int i = 0; i < colorNames().size(); ++i)
        look.colors.append(seedColor(seed, i));
    for (int i = 0; i < fontNames().size(); ++i)
        look.fontSizes.append(seedPointSize(seed, i) * fontFactor);
    look.radius = seed;
    return look;
}

ThemeLook ThemeLook::ofSeed(int seed, const QString &classname)
{
    ThemeLook look = ofSeed(seed);
    if (classname == QLatin1String("warning"))
        look.colors[warningForeground] = seedColor(seed + classSeedDistance, warningForeground);
    if (classname == QLatin1String("quiet"))
        look.colors[quietBackground] = seedColor(seed + classSeedDistance, quietBackground);
    return look;
}

ThemeLook ThemeLook::ofTheme(const Theme *theme)
{
    ThemeLook look;
    for (const QByteArray &name : colorNames())
        look.colors.append(theme->colors()->property(name.constData()).value<QColor>());
    for (const QByteArray &name : fontNames()) {
        const auto font = theme->fonts()->property(name.constData()).value<QFont>();
        look.fontSizes.append(font.pointSizeF());
    }
    look.radius = theme->radius();
    return look;
}

ThemeLook ThemeLook::ofProbe(const QObject *probe)
{
    ThemeLook look;
    for (const QByteArray &name : colorNames())
        look.colors.append(probe->property(probeProperty(name).constData()).value<QColor>());
    for (const QByteArray &name : fontNames()) {
        const auto font = probe->property(probeProperty(name).constData()).value<QFont>();
        look.fontSizes.append(font.pointSizeF());
    }
    look.radius = probe->property("shownRadius").toInt();
    return look;
}

bool ThemeLook::operator==(const ThemeLook &other) const
{
    return colors == other.colors && fontSizes == other.fontSizes && radius == other.radius;
}

QString ThemeLook::text() const
{
    QStringList words;
    for (const QColor &color : colors)
        words.append(color.name());
    for (const qreal size : fontSizes)
        words.append(QString::number(size));
    words.append(QStringLiteral("radius %1").arg(radius));
    return words.join(QLatin1Char(' '));
}
