#include "checker/themekeys.h"

#include <algorithm>
#include <iterator>

namespace {

const char ignoredObject[] = "passed over, as if the key were missing";
const char keptColor[] = "the color stays the application's default in `global`, the item's color "
                         "in a class";
const char keptShade[] = "as for `foreground`; the shade is not derived either";

QString text(const char *sentence)
{
    return QString::fromUtf8(sentence);
}

ThemeKey key(ThemeKey::Place place, const char *name, ThemeKey::Type type, const char *meaning,
             const char *absence, const char *mistake)
{
    ThemeKey result = {};
    result.place = place;
    result.name = QLatin1String(name);
    result.type = type;
    result.meaning = text(meaning);
    result.absence = text(absence);
    result.mistake = text(mistake);
    return result;
}

ThemeKey withDefault(ThemeKey entry, const char *json)
{
    entry.defaultJson = QLatin1String(json);
    return entry;
}

ThemeKey withUnit(ThemeKey entry, const char *unit)
{
    entry.unit = QLatin1String(unit);
    return entry;
}

/// An object that counts as missing when it is empty.
ThemeKey object(ThemeKey::Place place, const char *name, ThemeKey::Place content,
                const char *meaning, const char *absence, const char *mistake = ignoredObject)
{
    ThemeKey result = key(place, name, ThemeKey::Object, meaning, absence, mistake);
    result.content = content;
    return withDefault(result, "{}");
}

ThemeKey color(const char *name, const char *meaning, const char *absence,
               const char *mistake = keptColor)
{
    return key(ThemeKey::Colors, name, ThemeKey::Color, meaning, absence, mistake);
}

ThemeKey shade(const char *name, const char *meaning, const char *absence)
{
    return color(name, meaning, absence, keptShade);
}

ThemeKey font(const char *name, const char *meaning, const char *absence)
{
    return object(ThemeKey::Fonts, name, ThemeKey::Font, meaning, absence);
}

ThemeKey fontKey(const char *name, ThemeKey::Type type, const char *meaning, const char *absence,
                 const char *mistake)
{
    return key(ThemeKey::Font, name, type, meaning, absence, mistake);
}

QVector<ThemeKey> documentKeys()
{
    ThemeKey title = key(ThemeKey::Document, "title", ThemeKey::Text,
                         "The name by which applications and other themes find the theme. Letter "
                         "case counts.",
                         "the title is empty", "the title is empty");
    title.isRequired = true;
    return {
        key(ThemeKey::Document, "$schema", ThemeKey::Text,
            "Where the schema lies that editors complete and check the file by.",
            "editors need to be told by other means", "of no consequence for applications"),
        withDefault(title, "\"\""),
        withDefault(key(ThemeKey::Document, "extends", ThemeKey::Text,
                        "Title of the theme whose colors, fonts, radius, classes and styles this "
                        "one starts from.",
                        "the theme starts from the application's defaults",
                        "no text: as if the key were missing; the title of no theme that is there: "
                        "the whole theme is left out"),
                    "\"\""),
        object(ThemeKey::Document, "global", ThemeKey::Scope,
               "The theme's own colors, fonts and radius. They are laid over the application's "
               "defaults, *not* over the theme that is extended.",
               "colors, fonts and radius are those of the theme that is extended, or the defaults"),
        object(ThemeKey::Document, "", ThemeKey::Scope,
               "A class: values for the items that carry the key as a class name. Holds further "
               "members of any kind that only the application's own code reads.",
               "the class of that name of the theme that is extended, if it has one",
               "an empty class, which no item ever shows and which hides the one of that name of "
               "the theme that is extended"),
    };
}

QVector<ThemeKey> scopeKeys()
{
    ThemeKey radius = key(
            ThemeKey::Scope, "radius", ThemeKey::WholeNumber,
            "The radius of corners. Counts in `global` only: that of a class no item shows.", "0",
            "below zero, with a fraction, beyond 2147483647 or no number: as if the key "
            "were missing");
    return {
        object(ThemeKey::Scope, "colors", ThemeKey::Colors, "The colors of the scope.",
               "in `global` the application's colors, in a class those of the item"),
        object(ThemeKey::Scope, "fonts", ThemeKey::Fonts,
               "The fonts of the scope. All six are set anew as soon as one is described.",
               "in `global` the application's font for all six, in a class those of the item"),
        withUnit(withDefault(radius, "0"), "pixels"),
    };
}

QVector<ThemeKey> colorKeys()
{
    return {
        color("foreground", "Text and lines.", "the color of window text in the application"),
        shade("lighterForeground", "A lighter shade of it.",
              "in `global` `foreground` with twice the brightness, always opaque; in a class that "
              "of the item"),
        shade("darkerForeground", "A darker shade of it.",
              "in `global` `foreground` with half the brightness, always opaque; in a class that "
              "of the item"),
        color("background", "The page that all lies on.",
              "the color of windows in the application"),
        shade("lighterBackground", "A lighter shade of it: what is raised or hovered.",
              "in `global` `background` with twice the brightness, always opaque; in a class that "
              "of the item"),
        shade("darkerBackground", "A darker shade of it: what is sunken or pressed.",
              "in `global` `background` with half the brightness, always opaque; in a class that "
              "of the item"),
        color("selection", "Selected text; it has no shades.",
              "the color of highlighted text in the application"),
    };
}

QVector<ThemeKey> fontKeys()
{
    return {
        font("main", "Body text.", "the application's font at three quarters of its size"),
        font("alternate",
             "A second text font. What its description leaves out comes from the alternate font "
             "before: the application's, or the item's in a class.",
             "the main font"),
        font("h1",
             "The largest heading. As for all headings, what its description leaves out "
             "comes from the main font.",
             "the alternate font, 5 points larger than the main font"),
        font("h2", "The second heading.", "`h1`, 4 points larger than the main font"),
        font("h3", "The third heading.",
             "`h2`, 3 points larger than the main font, cut to whole points"),
        font("h4", "The smallest heading.",
             "`h3`, 1 point larger than the main font, cut to whole points"),
    };
}

QVector<ThemeKey> fontDescriptionKeys()
{
    ThemeKey pointSize = withUnit(
            fontKey("pointSize", ThemeKey::Number,
                    "The size, which is multiplied by 0.75: 16 gives a font of 12 points.",
                    "the size of the font that it builds on, multiplied by 0.75 as well",
                    "no number: as if the key were missing; zero or less: the size of the "
                    "application's font"),
            "4/3 points");
    pointSize.isPositive = true;

    ThemeKey bold = fontKey("bold", ThemeKey::Truth,
                            "Nothing: the weight always has the last word. Write `\"weight\": "
                            "\"Bold\"` instead.",
                            "the same", "the same");
    bold.isFutile = true;

    ThemeKey capitalization = fontKey(
            "capitalization", ThemeKey::Word, "How letters are written, in any letter case.",
            "mixed case, whatever the font has that it builds on", "mixed case");
    capitalization.words = QStringList{ QStringLiteral("MixedCase"), QStringLiteral("AllUppercase"),
                                        QStringLiteral("AllLowercase"), QStringLiteral("SmallCaps"),
                                        QStringLiteral("Capitalize") };

    return {
        fontKey("family", ThemeKey::Text, "The family.", "that of the font that it builds on",
                "no text: as if the key were missing; a family that is not installed: Qt chooses "
                "another one"),
        pointSize,
        fontKey("weight", ThemeKey::Text,
                "The weight, by the name that a style of the family has: `Light`, `Regular`, "
                "`Bold` and so on, exactly as written.",
                "that of the font that it builds on",
                "no text, or no style of the family: as if the key were missing"),
        bold,
        fontKey("italic", ThemeKey::Truth, "Whether the letters are slanted.",
                "`true` when the font that it builds on is italic or oblique",
                "as if the key were missing"),
        withDefault(capitalization, "\"MixedCase\""),
        withUnit(fontKey("letterSpacing", ThemeKey::Number, "The room added between letters.",
                         "that of the font that it builds on", "as if the key were missing"),
                 "pixels"),
    };
}

} // namespace

const QVector<ThemeKey> &ThemeKeys::all()
{
    static const QVector<ThemeKey> keys = documentKeys() + scopeKeys() + colorKeys() + fontKeys()
            + fontDescriptionKeys();
    return keys;
}

QVector<ThemeKey> ThemeKeys::at(ThemeKey::Place place)
{
    QVector<ThemeKey> result;
    std::copy_if(all().begin(), all().end(), std::back_inserter(result),
                 [place](const ThemeKey &entry) { return entry.place == place; });
    return result;
}

QStringList ThemeKeys::names(ThemeKey::Place place)
{
    QStringList result;
    for (const ThemeKey &entry : all()) {
        if (entry.place == place && !entry.name.isEmpty())
            result.append(entry.name);
    }
    return result;
}

const ThemeKey *ThemeKeys::find(ThemeKey::Place place, const QString &name)
{
    const ThemeKey *anyName = nullptr;
    for (const ThemeKey &entry : all()) {
        if (entry.place != place)
            continue;
        if (entry.name.isEmpty())
            anyName = &entry;
        else if (entry.name == name)
            return &entry;
    }
    return anyName;
}

QString ThemeKeys::path(ThemeKey::Place place)
{
    switch (place) {
    case ThemeKey::Document:
        break;
    case ThemeKey::Scope:
        return QStringLiteral("global");
    case ThemeKey::Colors:
        return QStringLiteral("global/colors");
    case ThemeKey::Fonts:
        return QStringLiteral("global/fonts");
    case ThemeKey::Font:
        return QStringLiteral("global/fonts/main");
    }
    return QString();
}

QString ThemeKeys::typeName(ThemeKey::Type type)
{
    switch (type) {
    case ThemeKey::Text:
        return QStringLiteral("text");
    case ThemeKey::Color:
        return QStringLiteral("color");
    case ThemeKey::Word:
        return QStringLiteral("word");
    case ThemeKey::Number:
        return QStringLiteral("number");
    case ThemeKey::WholeNumber:
        return QStringLiteral("whole number");
    case ThemeKey::Truth:
        return QStringLiteral("true or false");
    case ThemeKey::Object:
        return QStringLiteral("object");
    }
    return QString();
}
