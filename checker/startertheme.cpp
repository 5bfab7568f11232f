#include "checker/startertheme.h"

#include "checker/channel.h"
#include "checker/palette.h"
#include "checker/qtfonts.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtGui/QFontInfo>

#include <algorithm>

namespace {

const QColor danger(0xa9, 0x32, 0x26);

/// \a text with its quotes, as JSON has it.
QString quoted(const QString &text)
{
    const QByteArray array = QJsonDocument(QJsonArray{ text }).toJson(QJsonDocument::Compact);
    return QString::fromUtf8(array.mid(1, array.size() - 2));
}

QString colors(const Palette &palette, const QString &indent)
{
    const struct
    {
        const char *name;
        const QColor &color;
    } entries[] = {
        { "foreground", palette.foreground },
        { "lighterForeground", palette.lighterForeground },
        { "darkerForeground", palette.darkerForeground },
        { "background", palette.background },
        { "lighterBackground", palette.lighterBackground },
        { "darkerBackground", palette.darkerBackground },
        { "selection", palette.selection },
    };
    QStringList lines;
    for (const auto &entry : entries)
        lines.append(QStringLiteral("%1    \"%2\": \"%3\"")
                             .arg(indent, QLatin1String(entry.name), entry.color.name()));
    return QStringLiteral("%1\"colors\": {\n%2\n%1}").arg(indent, lines.join(QLatin1String(",\n")));
}

/// The ground of headers: the accent, subdued and dark, so that it does not outshine the page.
QColor headerBackground(const QColor &accent)
{
    QColor color;
    color.setHslF(std::max(accent.hslHueF(), Channel(0)), Channel(accent.hslSaturationF() * 0.7),
                  Channel(std::min(accent.lightnessF() * 0.67, 0.27)));
    return QColor(color.rgb());
}

/// The family that \a font is shown in on this machine, as JSON.
QString familyOf(const QFont &font)
{
    return quoted(QFontInfo(font).family());
}

QString fixedFamily()
{
    QFont font(QStringLiteral("monospace"));
    font.setStyleHint(QFont::Monospace);
    return familyOf(font);
}

/// The member that makes the application's font bold, if it can be.
QString bold()
{
    const QString style = QStringLiteral("Bold");
    if (QtFonts::weight(QFontInfo(QFont()).family(), style) == -1)
        return QString();
    return QStringLiteral(", \"weight\": \"Bold\"");
}

QString fonts()
{
    return QStringLiteral("        \"fonts\": {\n"
                          "            \"main\": { \"family\": %1, \"pointSize\": 14 },\n"
                          "            \"alternate\": { \"family\": %1, \"pointSize\": 14, "
                          "\"italic\": true },\n"
                          "            \"h1\": { \"pointSize\": 30 },\n"
                          "            \"h2\": { \"pointSize\": 23 },\n"
                          "            \"h3\": { \"pointSize\": 18%2 },\n"
                          "            \"h4\": { \"pointSize\": 14%2 }\n"
                          "        }")
            .arg(familyOf(QFont()), bold());
}

/// The fonts of a class, of which one is enough.
QString classFonts(const QString &members)
{
    return QStringLiteral("        \"fonts\": { \"main\": { %1 } }").arg(members);
}

QString classScope(const char *name, const QStringList &members)
{
    return QStringLiteral("    \"%1\": {\n%2\n    }")
            .arg(QLatin1String(name), members.join(QLatin1String(",\n")));
}

} // namespace

QByteArray starterTheme(const QString &title, const QColor &background, const QColor &accent)
{
    const QString indent(8, QLatin1Char(' '));
    const Palette page = Palette::on(background, accent);
    const Palette muted = page.muted();
    // A step away from the page, so that it is seen where it begins.
    const Palette code = Palette::on(page.darkerBackground, accent);
    const QString boldText = classFonts(
            QStringLiteral("\"family\": %1, \"pointSize\": 14%2").arg(familyOf(QFont()), bold()));
    const QString fixedText = classFonts(
            QStringLiteral("\"family\": %1, \"pointSize\": 13").arg(fixedFamily()));
    const QStringList members{
        QStringLiteral("    \"title\": %1").arg(quoted(title)),
        QStringLiteral("    \"global\": {\n%1,\n%2,\n%3\"radius\": 6\n    }")
                .arg(colors(page, indent), fonts(), indent),
        classScope("header", { colors(Palette::on(headerBackground(accent), accent), indent) }),
        classScope("primary", { colors(Palette::on(accent, accent), indent), boldText }),
        classScope("danger", { colors(Palette::on(danger, danger), indent), boldText }),
        classScope(
                "muted",
                { QStringLiteral("%1\"colors\": { \"foreground\": \"%2\", \"selection\": \"%3\" }")
                          .arg(indent, muted.foreground.name(), muted.selection.name()) }),
        classScope("code", { colors(code, indent), fixedText }),
    };
    return QStringLiteral("{\n%1\n}\n").arg(members.join(QLatin1String(",\n"))).toUtf8();
}
