#include "checker/themeschema.h"

#include "checker/themekeys.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtGui/QColor>

#include <limits>

namespace {

const QLatin1String descriptionKey("description");
const QLatin1String propertiesKey("properties");
const QLatin1String additionalKey("additionalProperties");
const QLatin1String typeKey("type");
const QLatin1String patternKey("pattern");

QJsonObject reference(const QString &name)
{
    return { { QStringLiteral("$ref"), QLatin1String("#/$defs/") + name } };
}

/// A pattern that takes \a words in any letter case, for which such patterns have no flag, with
/// \a between allowed around their letters.
QString inAnyCase(const QStringList &words, const QString &between = QString())
{
    QStringList alternatives;
    for (const QString &word : words) {
        QString alternative = between;
        for (const QChar letter : word)
            alternative += QStringLiteral("[%1%2]").arg(letter.toUpper(), letter.toLower())
                    + between;
        alternatives.append(alternative);
    }
    return QStringLiteral("^(%1)$").arg(alternatives.join(QLatin1Char('|')));
}

/// Text that is one of \a words: those are what editors offer, and all that \a pattern takes fits.
QJsonArray choice(const QStringList &words, const QString &pattern)
{
    return { QJsonObject{ { QStringLiteral("enum"), QJsonArray::fromStringList(words) } },
             QJsonObject{ { patternKey, pattern } } };
}

QJsonObject colorSchema()
{
    // Qt passes over blanks in names.
    const QStringList names = QColor::colorNames();
    QJsonArray forms = choice(names, inAnyCase(names, QStringLiteral("[ \\t]*")));
    // The forms of three and four digits a channel are rare, but read.
    forms.prepend(QJsonObject{
            { patternKey,
              QStringLiteral("^#([0-9A-Fa-f]{3}|[0-9A-Fa-f]{6}|[0-9A-Fa-f]{8}|"
                             "[0-9A-Fa-f]{9}|[0-9A-Fa-f]{12})$") },
            { QStringLiteral("examples"),
              QJsonArray{ QStringLiteral("#1d2b36"), QStringLiteral("#801d2b36") } } });
    return { { descriptionKey,
               QStringLiteral("#RRGGBB, #AARRGGBB (alpha first), #RGB, or the name of a color.") },
             { typeKey, QStringLiteral("string") },
             { QStringLiteral("anyOf"), forms } };
}

/// Markdown without its marks.
QString plain(QString markdown)
{
    return markdown.remove(QLatin1Char('`')).remove(QLatin1Char('*'));
}

QString description(const ThemeKey &key)
{
    QString result = plain(key.meaning);
    if (!key.unit.isEmpty())
        result += QStringLiteral(" In %1.").arg(key.unit);
    return result
            + QStringLiteral(" When missing: %1. A wrong value: %2.")
                      .arg(plain(key.absence), plain(key.mistake));
}

/// The name under which the schema of the objects at \a place stands, those in classes by
/// themselves: applications may read further members of any kind there.
QString definition(ThemeKey::Place place, bool isInClass)
{
    QString name;
    switch (place) {
    case ThemeKey::Document:
        break;
    case ThemeKey::Scope:
        name = QStringLiteral("scope");
        break;
    case ThemeKey::Colors:
        name = QStringLiteral("colors");
        break;
    case ThemeKey::Fonts:
        name = QStringLiteral("fonts");
        break;
    case ThemeKey::Font:
        name = QStringLiteral("font");
        break;
    }
    return isInClass ? name + QLatin1String("InClass") : name;
}

QJsonObject typeSchema(const ThemeKey &key, bool isInClass)
{
    QJsonObject schema;
    switch (key.type) {
    case ThemeKey::Text:
        schema = { { typeKey, QStringLiteral("string") } };
        if (key.isRequired)
            schema.insert(QStringLiteral("minLength"), 1);
        return schema;
    case ThemeKey::Color:
        return reference(QStringLiteral("color"));
    case ThemeKey::Word:
        return { { typeKey, QStringLiteral("string") },
                 { QStringLiteral("anyOf"), choice(key.words, inAnyCase(key.words)) } };
    case ThemeKey::Number:
        schema = { { typeKey, QStringLiteral("number") } };
        if (key.isPositive)
            schema.insert(QStringLiteral("exclusiveMinimum"), 0);
        return schema;
    case ThemeKey::WholeNumber:
        return { { typeKey, QStringLiteral("integer") },
                 { QStringLiteral("minimum"), 0 },
                 { QStringLiteral("maximum"), std::numeric_limits<int>::max() } };
    case ThemeKey::Truth:
        return { { typeKey, QStringLiteral("boolean") } };
    case ThemeKey::Object:
        return reference(definition(key.content, isInClass || key.name.isEmpty()));
    }
    return schema;
}

QJsonObject keySchema(const ThemeKey &key, bool isInClass)
{
    // No item shows it, so what it is does not matter.
    const bool isRadiusOfClass = isInClass && key.type == ThemeKey::WholeNumber;
    QJsonObject schema = isRadiusOfClass ? QJsonObject() : typeSchema(key, isInClass);
    schema.insert(descriptionKey, description(key));
    if (!key.defaultJson.isEmpty()) {
        // The parser takes whole documents only.
        const QByteArray array = '[' + key.defaultJson.toUtf8() + ']';
        schema.insert(QStringLiteral("default"), QJsonDocument::fromJson(array).array().at(0));
    }
    if (key.isFutile || isRadiusOfClass)
        schema.insert(QStringLiteral("deprecated"), true);
    return schema;
}

QJsonObject objectSchema(ThemeKey::Place place, bool isInClass)
{
    QJsonObject properties;
    QJsonArray required;
    const QVector<ThemeKey> keys = ThemeKeys::at(place);
    for (const ThemeKey &key : keys) {
        if (!key.name.isEmpty())
            properties.insert(key.name, keySchema(key, isInClass));
        if (key.isRequired)
            required.append(key.name);
    }
    QJsonObject schema{ { typeKey, QStringLiteral("object") },
                        { propertiesKey, properties },
                        { additionalKey, isInClass } };
    if (!required.isEmpty())
        schema.insert(QStringLiteral("required"), required);
    return schema;
}

} // namespace

QJsonObject themeSchema()
{
    QJsonObject definitions{ { QStringLiteral("color"), colorSchema() } };
    for (const ThemeKey::Place place :
         { ThemeKey::Scope, ThemeKey::Colors, ThemeKey::Fonts, ThemeKey::Font }) {
        for (const bool isInClass : { false, true })
            definitions.insert(definition(place, isInClass), objectSchema(place, isInClass));
    }

    QJsonObject schema = objectSchema(ThemeKey::Document, false);
    schema.insert(QStringLiteral("$schema"),
                  QStringLiteral("https://json-schema.org/draft/2020-12/schema"));
    schema.insert(QStringLiteral("title"), QStringLiteral("Theme file"));
    schema.insert(additionalKey, keySchema(*ThemeKeys::find(ThemeKey::Document, QString()), false));
    // Comments and the like: nobody takes them for a class.
    schema.insert(QStringLiteral("patternProperties"),
                  QJsonObject{ { QStringLiteral("^\\$"), true } });
    // The class names of an item are separated by blanks, so that no other key is ever one of them.
    schema.insert(QStringLiteral("propertyNames"),
                  QJsonObject{ { patternKey, QStringLiteral("^[^ ]+$") } });
    schema.insert(QStringLiteral("$defs"), definitions);
    return schema;
}
