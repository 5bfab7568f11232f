#include "checker/effectivevalues.h"

#include "checker/lineage.h"
#include "checker/loadedfolder.h"
#include "checker/qtfonts.h"
#include "checker/rules.h"
#include "checker/themekeys.h"
#include "theme/theme.h"

#include <QtCore/QDir>
#include <QtCore/QHash>
#include <QtCore/QJsonObject>
#include <QtCore/QMap>
#include <QtCore/QUrl>

#include <algorithm>

namespace {

/// The origins of a theme's values under their keys.
using Origins = QHash<QString, ValueOrigin>;

const QLatin1String fontSuffix("Font");
const QLatin1String withoutClass(", as it is without the class");
const QStringList fontAttributes{
    QStringLiteral("family"), QStringLiteral("pointSize"),      QStringLiteral("weight"),
    QStringLiteral("italic"), QStringLiteral("capitalization"), QStringLiteral("letterSpacing")
};

QString colorKey(const QString &name)
{
    return QStringLiteral("colors/") + name;
}

QString fontKey(const QString &name, const QString &attribute)
{
    return QStringLiteral("fonts/%1%2/%3").arg(name, fontSuffix, attribute);
}

ValueOrigin byDefault(const QString &rule)
{
    ValueOrigin origin;
    origin.rule = rule;
    return origin;
}

ValueOrigin written(const FoundScope &scope, const QStringList &path)
{
    ValueOrigin origin;
    origin.kind = ValueOrigin::Written;
    origin.file = scope.file;
    origin.position = scope.position(path);
    origin.scope = scope.name;
    origin.inheritedFrom = scope.inheritedFrom;
    return origin;
}

/// The origin of what was made by \a rule from the value \a base, which comes from \a from.
ValueOrigin derived(const ValueOrigin &from, const QString &base, const QString &rule)
{
    ValueOrigin origin = from;
    origin.kind = ValueOrigin::Derived;
    origin.base = base;
    origin.rule = rule;
    return origin;
}

/// The origin of what is the same as the value \a base, which comes from \a from.
ValueOrigin copied(const ValueOrigin &from, const QString &base)
{
    return from.kind == ValueOrigin::Default ? from : derived(from, base, ValueOrigin::same());
}

/// The class names of an item, as the plugin splits them.
QStringList split(const QString &classnames)
{
    return classnames.trimmed().split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// The shades of the base color \a name: their names and how they are derived.
QMap<QString, QString> shadesOf(const QString &name)
{
    QString word = name;
    word[0] = word.at(0).toUpper();
    QMap<QString, QString> shades;
    const QStringList names = ThemeKeys::names(ThemeKey::Colors);
    if (names.contains(QLatin1String("lighter") + word))
        shades.insert(QLatin1String("lighter") + word, QStringLiteral("twice as bright, opaque"));
    if (names.contains(QLatin1String("darker") + word))
        shades.insert(QLatin1String("darker") + word, QStringLiteral("half as bright, opaque"));
    return shades;
}

Origins defaultColors()
{
    Origins origins;
    const auto add = [&origins](const char *name, const char *rule) {
        origins.insert(colorKey(QLatin1String(name)), byDefault(QLatin1String(rule)));
    };
    add("foreground", "the application's window text");
    add("lighterForeground", "the application's window text, half as bright again");
    add("darkerForeground", "the application's window text, half as bright");
    add("background", "the application's windows");
    add("lighterBackground", "the application's windows, half as bright again");
    add("darkerBackground", "the application's windows, half as bright");
    add("selection", "the application's highlighted text");
    return origins;
}

Origins defaultFonts()
{
    Origins origins;
    const QStringList names = ThemeKeys::names(ThemeKey::Fonts);
    for (const QString &name : names) {
        for (const QString &attribute : fontAttributes)
            origins.insert(fontKey(name, attribute),
                           byDefault(QStringLiteral("the application's font")));
    }
    return origins;
}

bool isColor(const QJsonValue &value)
{
    return readColor(value.toString()).isValid();
}

/// Lays the colors of \a scope over \a origins.
void addColors(const FoundScope &scope, bool deriveMissing, Origins *origins)
{
    const QString group = QStringLiteral("colors");
    const QJsonObject colors = scope.value({ group }).toObject();
    if (colors.isEmpty())
        return;
    const auto add = [&](const QString &name) {
        if (isColor(colors.value(name)))
            origins->insert(colorKey(name), written(scope, { group, name }));
    };
    for (const QString &base : { QStringLiteral("foreground"), QStringLiteral("background"),
                                 QStringLiteral("selection") }) {
        add(base);
        const QMap<QString, QString> shades = shadesOf(base);
        for (auto shade = shades.begin(); shade != shades.end(); ++shade) {
            const QString key = colorKey(shade.key());
            if (colors.contains(shade.key()))
                add(shade.key());
            else if (deriveMissing)
                origins->insert(
                        key,
                        derived(origins->value(colorKey(base)), colorKey(base), shade.value()));
            else if (colors.contains(base) && origins->value(key).kind == ValueOrigin::Derived)
                // The class may have another base color, which the shade does not follow.
                (*origins)[key].rule = shade.value() + withoutClass;
        }
    }
}

/// The font that a description builds on, as origins of its attributes.
using BaseFont = Origins;

BaseFont applicationFont()
{
    BaseFont base;
    for (const QString &attribute : fontAttributes)
        base.insert(attribute, byDefault(QStringLiteral("the application's font")));
    base.insert(QStringLiteral("pointSize"),
                byDefault(QStringLiteral("the application's font, 0.75 of its size")));
    return base;
}

BaseFont mainFont(const Origins &origins)
{
    const QString name = QStringLiteral("main");
    BaseFont base;
    for (const QString &attribute : fontAttributes) {
        const QString key = fontKey(name, attribute);
        base.insert(attribute, copied(origins.value(key), key));
    }
    const QString size = fontKey(name, QStringLiteral("pointSize"));
    base.insert(QStringLiteral("pointSize"),
                derived(origins.value(size), size, QStringLiteral("0.75 of it")));
    return base;
}

/// The alternate font that an item has without its classes.
BaseFont plainAlternateFont(const Origins &origins)
{
    const QString name = QStringLiteral("alternate");
    BaseFont base;
    for (const QString &attribute : fontAttributes)
        base.insert(attribute, origins.value(fontKey(name, attribute)));
    const QString size = fontKey(name, QStringLiteral("pointSize"));
    base.insert(QStringLiteral("pointSize"),
                derived(origins.value(size), size, QStringLiteral("0.75 of it") + withoutClass));
    return base;
}

/// Works out where the fonts come from that the plugin makes of a scope.
class FontOrigins
{
public:
    /// \param fonts the fonts that the plugin has made
    /// \param origins where the fonts came from before; taken over
    FontOrigins(const FoundScope &scope, const ThemeObjectFonts *fonts, Origins *origins)
        : m_scope(scope)
        , m_fonts(fonts)
        , m_origins(origins)
    {
    }

    /// \param alternate what the description of the alternate font builds on
    void add(const BaseFont &alternate)
    {
        const QJsonObject fonts = m_scope.value({ group() }).toObject();
        if (fonts.isEmpty())
            return;
        QString previous;
        const QStringList names = ThemeKeys::names(ThemeKey::Fonts);
        for (const QString &name : names) {
            const QJsonObject description = fonts.value(name).toObject();
            if (previous.isEmpty())
                describe(name, description, applicationFont());
            else if (description.isEmpty())
                carry(name, previous);
            else if (name == QLatin1String("alternate"))
                describe(name, description, alternate);
            else
                describe(name, description, mainFont(*m_origins));
            previous = name;
        }
    }

private:
    static QString group() { return QStringLiteral("fonts"); }

    void describe(const QString &name, const QJsonObject &description, const BaseFont &base)
    {
        const auto add = [&](const QString &attribute, bool isWritten,
                             const ValueOrigin &otherwise) {
            m_origins->insert(fontKey(name, attribute),
                              isWritten ? written(m_scope, { group(), name, attribute })
                                        : otherwise);
        };
        const auto isNumber = [&](const QString &attribute) {
            return description.value(attribute).isDouble();
        };
        for (const QString &attribute : fontAttributes) {
            const QJsonValue value = description.value(attribute);
            if (attribute == QLatin1String("family"))
                add(attribute, value.isString(), base.value(attribute));
            else if (attribute == QLatin1String("pointSize"))
                // Qt takes no size that is not above zero, and leaves what it had before.
                add(attribute, value.toDouble() > 0,
                    isNumber(attribute) ? byDefault(QStringLiteral("the application's font"))
                                        : base.value(attribute));
            else if (attribute == QLatin1String("weight"))
                add(attribute, isWeight(name, value.toString()), base.value(attribute));
            else if (attribute == QLatin1String("italic"))
                add(attribute, value.isBool(), base.value(attribute));
            else if (attribute == QLatin1String("capitalization"))
                add(attribute, isCapitalization(value.toString()),
                    byDefault(QStringLiteral("mixed case")));
            else
                add(attribute, isNumber(attribute), base.value(attribute));
        }
    }

    /// The font \a name has no description, so it is the one before it in another size.
    void carry(const QString &name, const QString &previous)
    {
        static const QHash<QString, QString> sizes{
            { QStringLiteral("alternate"), ValueOrigin::same() },
            { QStringLiteral("h1"), QStringLiteral("5 points more") },
            { QStringLiteral("h2"), QStringLiteral("4 points more") },
            { QStringLiteral("h3"), QStringLiteral("3 points more, cut to whole points") },
            { QStringLiteral("h4"), QStringLiteral("1 point more, cut to whole points") },
        };
        for (const QString &attribute : fontAttributes) {
            const QString base = fontKey(previous, attribute);
            m_origins->insert(fontKey(name, attribute), copied(m_origins->value(base), base));
        }
        const QString size = QStringLiteral("pointSize");
        const QString base = fontKey(QStringLiteral("main"), size);
        m_origins->insert(fontKey(name, size),
                          derived(m_origins->value(base), base, sizes.value(name)));
    }

    bool isWeight(const QString &name, const QString &style) const
    {
        const QByteArray property = (name + fontSuffix).toLatin1();
        const QString family = m_fonts->property(property.constData()).value<QFont>().family();
        return !style.isEmpty() && QtFonts::weight(family, style) != -1;
    }

    static bool isCapitalization(const QString &text)
    {
        const ThemeKey *key = ThemeKeys::find(ThemeKey::Font, QStringLiteral("capitalization"));
        // Letters that differ in more than case count as the same otherwise.
        return std::any_of(key->words.begin(), key->words.end(), [&text](const QString &word) {
            return word.toLower() == text.toLower();
        });
    }

    const FoundScope &m_scope;
    const ThemeObjectFonts *m_fonts;
    Origins *m_origins;
};

QString capitalizationWord(QFont::Capitalization capitalization)
{
    switch (capitalization) {
    case QFont::MixedCase:
        break;
    case QFont::AllUppercase:
        return QStringLiteral("AllUppercase");
    case QFont::AllLowercase:
        return QStringLiteral("AllLowercase");
    case QFont::SmallCaps:
        return QStringLiteral("SmallCaps");
    case QFont::Capitalize:
        return QStringLiteral("Capitalize");
    }
    return QStringLiteral("MixedCase");
}

QVariant attributeOf(const QFont &font, const QString &attribute)
{
    if (attribute == QLatin1String("family"))
        return font.family();
    if (attribute == QLatin1String("pointSize"))
        return font.pointSizeF();
    if (attribute == QLatin1String("weight"))
        return font.weight();
    if (attribute == QLatin1String("italic"))
        return font.italic();
    if (attribute == QLatin1String("capitalization"))
        return capitalizationWord(font.capitalization());
    return font.letterSpacing();
}

/// An item of the running application, as far as its values go.
class Item
{
public:
    /// An item with \a classnames while \a theme is the first current theme.
    Item(Theme *theme, const QString &classnames)
    {
        m_theme.hardCopy(theme);
        m_theme.setClassnames(classnames);
    }

    Theme *operator->() { return &m_theme; }
    const ThemePrivate *data() const { return m_data; }

private:
    Theme m_theme;
    // Before class names are set, the groups are those of the theme itself.
    const ThemePrivate *const m_data = qobject_cast<const ThemePrivate *>(
            m_theme.colors()->parent());
};

void addColorsAndFonts(Item &item, const Origins &origins, QVector<EffectiveValue> *values)
{
    const QStringList colors = ThemeKeys::names(ThemeKey::Colors);
    for (const QString &name : colors) {
        const QString key = colorKey(name);
        values->append(
                { key, item->colors()->property(name.toLatin1().constData()), origins.value(key) });
    }
    const QStringList fonts = ThemeKeys::names(ThemeKey::Fonts);
    for (const QString &name : fonts) {
        const QByteArray property = (name + fontSuffix).toLatin1();
        const QFont font = item->fonts()->property(property.constData()).value<QFont>();
        for (const QString &attribute : fontAttributes) {
            const QString key = fontKey(name, attribute);
            values->append({ key, attributeOf(font, attribute), origins.value(key) });
        }
    }
}

Origins originsOf(const Lineage &lineage, Theme *theme, Item &item, const QStringList &classnames)
{
    Origins origins = defaultColors();
    const Origins fonts = defaultFonts();
    for (auto origin = fonts.begin(); origin != fonts.end(); ++origin)
        origins.insert(origin.key(), origin.value());

    const FoundScope global = lineage.global();
    if (global.isEffective()) {
        addColors(global, true, &origins);
        FontOrigins(global, theme->fonts(), &origins).add(applicationFont());
    }
    // The first class with a scope decides, alone.
    for (const QString &name : classnames) {
        const FoundScope scope = lineage.classScope(name);
        if (!scope.isEffective())
            continue;
        addColors(scope, false, &origins);
        const BaseFont alternate = plainAlternateFont(origins);
        FontOrigins(scope, item->fonts(), &origins).add(alternate);
        break;
    }
    return origins;
}

ValueOrigin radiusOrigin(const Lineage &lineage)
{
    const FoundScope global = lineage.global();
    const QStringList path{ QStringLiteral("radius") };
    if (global.isEffective() && global.value(path).toInt(-1) >= 0)
        return written(global, path);
    return byDefault(QStringLiteral("no radius"));
}

/// The names under which an item with \a classnames finds a style.
QStringList styleNames(const ThemePrivate &data, const QStringList &classnames)
{
    QStringList names = data.styles.keys();
    for (const QString &name : classnames) {
        const QString ending = QLatin1Char('_') + name;
        for (auto style = data.styles.begin(); style != data.styles.end(); ++style) {
            if (style.key().endsWith(ending))
                names.append(style.key().chopped(ending.size()));
        }
    }
    names.sort();
    names.removeDuplicates();
    return names;
}

void addStyles(Item &item, const QString &classnames, QVector<EffectiveValue> *values)
{
    const QStringList classes = split(classnames);
    const QStringList names = styleNames(*item.data(), classes);
    for (const QString &name : names) {
        const QString url = item->getStyle(name, classnames);
        ValueOrigin origin;
        origin.kind = ValueOrigin::File;
        origin.file = QUrl(url).toLocalFile();
        const auto variant = std::find_if(
                classes.rbegin(), classes.rend(), [&](const QString &classname) {
                    return item.data()->styles.value(name + QLatin1Char('_') + classname) == url;
                });
        if (variant != classes.rend())
            origin.scope = *variant;
        values->append({ QStringLiteral("styles/") + name, url, origin });
    }
}

ValueOrigin classValueOrigin(const Lineage &lineage, const QStringList &classnames,
                             const QStringList &path)
{
    if (path.isEmpty())
        return ValueOrigin();
    // The other way round than for colors and fonts: the last class that has the value decides.
    for (auto name = classnames.rbegin(); name != classnames.rend(); ++name) {
        const FoundScope scope = lineage.classScope(*name);
        if (scope.isEffective() && !scope.value(path).isUndefined())
            return written(scope, path);
    }
    return ValueOrigin();
}

/// The paths of all values in \a object that are no objects themselves.
void findPaths(const QJsonObject &object, const QString &prefix, QStringList *paths)
{
    for (auto member = object.begin(); member != object.end(); ++member) {
        // A path can't lead through such names.
        if (member.key().isEmpty() || member.key().contains(QLatin1Char('/')))
            continue;
        const QString path = prefix + member.key();
        const QJsonObject content = member.value().toObject();
        if (content.isEmpty())
            paths->append(path);
        else
            findPaths(content, path + QLatin1Char('/'), paths);
    }
}

void addClassValues(const Lineage &lineage, Item &item, const QStringList &classnames,
                    QVector<EffectiveValue> *values)
{
    QStringList paths;
    for (const QString &name : classnames) {
        QJsonObject scope = lineage.classScope(name).value({}).toObject();
        const QStringList wellKnown = ThemeKeys::names(ThemeKey::Scope);
        for (const QString &key : wellKnown)
            scope.remove(key);
        findPaths(scope, QString(), &paths);
    }
    paths.sort();
    paths.removeDuplicates();
    for (const QString &path : std::as_const(paths)) {
        values->append({ QStringLiteral("class/") + path, item->getClassValue(path, QVariant()),
                         classValueOrigin(lineage, classnames, path.split(QLatin1Char('/'))) });
    }
}

QStringList classesOf(const Lineage &lineage, const Item &item)
{
    QStringList classes = lineage.classNames();
    const QStringList styles = item.data()->styles.keys();
    for (const QString &style : styles) {
        if (style.contains(QLatin1Char('_')))
            classes.append(style.section(QLatin1Char('_'), 1));
    }
    classes.sort();
    classes.removeDuplicates();
    return classes;
}

} // namespace

EffectiveValues EffectiveValues::of(const LoadedFolder &folder, Theme *theme,
                                    const QString &classnames)
{
    const Lineage lineage(folder, theme);
    const QStringList classes = split(classnames);
    Item item(theme, classnames);
    EffectiveValues result;
    result.title = theme->title();
    result.file = theme->filename();
    result.classnames = classes.join(QLatin1Char(' '));
    result.themeClasses = classesOf(lineage, item);
    for (const QString &name : classes) {
        if (!result.themeClasses.contains(name))
            result.missingClasses.append(name);
    }
    result.missingClasses.removeDuplicates();
    addColorsAndFonts(item, originsOf(lineage, theme, item, classes), &result.values);
    result.values.append({ QStringLiteral("radius"), item->radius(), radiusOrigin(lineage) });
    addStyles(item, result.classnames, &result.values);
    addClassValues(lineage, item, classes, &result.values);
    return result;
}

EffectiveValue EffectiveValues::classValue(const LoadedFolder &folder, Theme *theme,
                                           const QString &classnames, const QString &path)
{
    Item item(theme, classnames);
    const QStringList steps = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    return { QStringLiteral("class/") + steps.join(QLatin1Char('/')),
             item->getClassValue(path, QVariant()),
             classValueOrigin(Lineage(folder, theme), split(classnames), steps) };
}

const EffectiveValue *EffectiveValues::find(const QString &key) const
{
    const auto value = std::find_if(
            values.begin(), values.end(),
            [&key](const EffectiveValue &entry) { return entry.key == key; });
    return value == values.end() ? nullptr : &*value;
}
