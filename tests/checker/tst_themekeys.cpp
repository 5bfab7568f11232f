#include "checker/themekeys.h"

#include "checker/effectivevalues.h"
#include "checker/loadedfolder.h"
#include "checker/themereference.h"
#include "checker/themeschema.h"
#include "support/testcase.h"
#include "values/themeobjectcolors.h"
#include "values/themeobjectfonts.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QMetaProperty>
#include <QtTest/QtTest>

/// The table of keys against the plugin that reads them, and against what is made from it.
class tst_ThemeKeys : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void colorsAreThePropertiesOfTheGroup();
    void fontsAreThePropertiesOfTheGroup();
    void everyKeyIsRead_data();
    void everyKeyIsRead();
    void defaultIsTheSameAsNoKey_data();
    void defaultIsTheSameAsNoKey();
    void wordsAreRead_data();
    void wordsAreRead();
    void everyTextIsThere();
    void findsKeys();
    void schemaHasTheKeys();
    void referenceIsInTheDocumentation();

private:
    QVector<EffectiveValue> valuesOf(const QByteArray &theme);
};

namespace {

QStringList sorted(QStringList names)
{
    names.sort();
    return names;
}

/// The names of the properties of \a type's own.
QStringList propertiesOf(const QMetaObject &type)
{
    QStringList names;
    for (int i = type.propertyOffset(); i < type.propertyCount(); ++i)
        names.append(QLatin1String(type.property(i).name()));
    return names;
}

/// A theme in which \a member stands where the keys at \a place belong. The groups are never empty:
/// that would leave all of them out.
QByteArray themeWith(ThemeKey::Place place, const QByteArray &member)
{
    const QByteArray more = (member.isEmpty() ? "" : ", ") + member;
    switch (place) {
    case ThemeKey::Document:
        return '{' + member + '}';
    case ThemeKey::Scope:
        return "{\"global\": {\"other\": 1" + more + "}}";
    case ThemeKey::Colors:
        return "{\"global\": {\"colors\": {\"other\": 1" + more + "}}}";
    case ThemeKey::Fonts:
        return "{\"global\": {\"fonts\": {\"other\": 1" + more + "}}}";
    case ThemeKey::Font:
        break;
    }
    return "{\"global\": {\"fonts\": {\"main\": {\"other\": 1" + more + "}}}}";
}

QString rowName(const ThemeKey &key)
{
    return QStringLiteral("%1 in \"%2\"").arg(key.name, ThemeKeys::path(key.place));
}

bool isSame(const QVector<EffectiveValue> &a, const QVector<EffectiveValue> &b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const EffectiveValue &left, const EffectiveValue &right) {
                          return left.key == right.key && left.value == right.value;
                      });
}

QJsonObject definition(const char *name)
{
    return themeSchema()
            .value(QLatin1String("$defs"))
            .toObject()
            .value(QLatin1String(name))
            .toObject();
}

} // namespace

/// What an item reads while the theme with the text \a theme is the current one.
QVector<EffectiveValue> tst_ThemeKeys::valuesOf(const QByteArray &theme)
{
    write(QStringLiteral("a.thm"), theme);
    const LoadedFolder themes(folder());
    if (themes.themes().size() != 1)
        qFatal("the theme is not loaded");
    return EffectiveValues::of(themes, themes.themes().constFirst(), QString()).values;
}

void tst_ThemeKeys::colorsAreThePropertiesOfTheGroup()
{
    QCOMPARE(sorted(ThemeKeys::names(ThemeKey::Colors)),
             sorted(propertiesOf(ThemeObjectColors::staticMetaObject)));
}

void tst_ThemeKeys::fontsAreThePropertiesOfTheGroup()
{
    QStringList fonts;
    const QStringList names = ThemeKeys::names(ThemeKey::Fonts);
    for (const QString &name : names)
        fonts.append(name + QLatin1String("Font"));
    QStringList properties = propertiesOf(ThemeObjectFonts::staticMetaObject);
    // A constant, which no theme sets.
    QVERIFY(properties.removeOne(QStringLiteral("fontFactor")));
    QCOMPARE(sorted(fonts), sorted(properties));
}

void tst_ThemeKeys::everyKeyIsRead_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<QByteArray>("member");
    QTest::addColumn<bool>("changesSomething");
    for (const ThemeKey &key : ThemeKeys::all()) {
        // What these do shows in other places than the values of the one theme.
        if (key.place == ThemeKey::Document && key.name != QLatin1String("global"))
            continue;
        QByteArray value;
        switch (key.type) {
        case ThemeKey::Text:
            value = key.name == QLatin1String("weight") ? "\"Bold\"" : "\"DejaVu Serif\"";
            break;
        case ThemeKey::Color:
            value = "\"#123456\"";
            break;
        case ThemeKey::Word:
            value = "\"smallcaps\"";
            break;
        case ThemeKey::Number:
        case ThemeKey::WholeNumber:
            value = "17";
            break;
        case ThemeKey::Truth:
            value = "true";
            break;
        case ThemeKey::Object:
            value = key.content == ThemeKey::Font    ? "{\"pointSize\": 99}"
                    : key.content == ThemeKey::Fonts ? "{\"main\": {\"pointSize\": 99}}"
                    : key.content == ThemeKey::Scope ? "{\"radius\": 5}"
                                                     : "{\"foreground\": \"#123456\"}";
            break;
        }
        QByteArray member = '"' + key.name.toLatin1() + "\": " + value;
        // The application's font has no family that could be asked for weights.
        if (key.name == QLatin1String("weight"))
            member += ", \"family\": \"DejaVu Sans\"";
        QTest::newRow(qPrintable(rowName(key))) << int(key.place) << member << !key.isFutile;
    }
}

void tst_ThemeKeys::everyKeyIsRead()
{
    QFETCH(int, place);
    QFETCH(QByteArray, member);
    QFETCH(bool, changesSomething);
    const ThemeKey::Place where = ThemeKey::Place(place);
    QByteArray without;
    const auto family = member.indexOf(", \"family\"");
    if (family >= 0)
        without = member.mid(family + 2);
    QCOMPARE(isSame(valuesOf(themeWith(where, without)), valuesOf(themeWith(where, member))),
             !changesSomething);
}

void tst_ThemeKeys::defaultIsTheSameAsNoKey_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<QByteArray>("member");
    for (const ThemeKey &key : ThemeKeys::all()) {
        if (!key.defaultJson.isEmpty() && !key.name.isEmpty())
            QTest::newRow(qPrintable(rowName(key)))
                    << int(key.place)
                    << QByteArray('"' + key.name.toLatin1() + "\": " + key.defaultJson.toLatin1());
    }
}

void tst_ThemeKeys::defaultIsTheSameAsNoKey()
{
    QFETCH(int, place);
    QFETCH(QByteArray, member);
    QVERIFY(isSame(valuesOf(themeWith(ThemeKey::Place(place), QByteArray())),
                   valuesOf(themeWith(ThemeKey::Place(place), member))));
}

void tst_ThemeKeys::wordsAreRead_data()
{
    QTest::addColumn<QString>("word");
    const ThemeKey *key = ThemeKeys::find(ThemeKey::Font, QStringLiteral("capitalization"));
    QCOMPARE(key->words.size(), 5);
    for (const QString &word : key->words) {
        QTest::newRow(qPrintable(word)) << word;
        QTest::newRow(qPrintable(word.toUpper())) << word.toUpper();
    }
}

void tst_ThemeKeys::wordsAreRead()
{
    QFETCH(QString, word);
    const QVector<EffectiveValue> values = valuesOf(
            themeWith(ThemeKey::Font, "\"capitalization\": \"" + word.toLatin1() + '"'));
    const auto capitalization = std::find_if(
            values.begin(), values.end(), [](const EffectiveValue &value) {
                return value.key == QLatin1String("fonts/mainFont/capitalization");
            });
    QVERIFY(capitalization != values.end());
    QCOMPARE(capitalization->value.toString().toLower(), word.toLower());
}

void tst_ThemeKeys::everyTextIsThere()
{
    for (const ThemeKey &key : ThemeKeys::all()) {
        const QByteArray name = rowName(key).toUtf8();
        QVERIFY2(key.meaning.endsWith(QLatin1Char('.')), name.constData());
        for (const QString &part : { key.absence, key.mistake })
            QVERIFY2(!part.isEmpty() && !part.endsWith(QLatin1Char('.')), name.constData());
        const bool isNumber = key.type == ThemeKey::Number || key.type == ThemeKey::WholeNumber;
        QVERIFY2(key.unit.isEmpty() != isNumber, name.constData());
        QVERIFY2(key.words.isEmpty() != (key.type == ThemeKey::Word), name.constData());
    }
}

void tst_ThemeKeys::findsKeys()
{
    QCOMPARE(ThemeKeys::find(ThemeKey::Colors, QStringLiteral("selection"))->name,
             QStringLiteral("selection"));
    QVERIFY(!ThemeKeys::find(ThemeKey::Colors, QStringLiteral("Selection")));
    QVERIFY(!ThemeKeys::find(ThemeKey::Colors, QStringLiteral("title")));
    // Whatever is no other key of the document is a class.
    const ThemeKey *scope = ThemeKeys::find(ThemeKey::Document, QStringLiteral("Title"));
    QVERIFY(scope);
    QCOMPARE(scope->name, QString());
    QCOMPARE(scope->content, ThemeKey::Scope);
    QVERIFY(!ThemeKeys::names(ThemeKey::Document).contains(QString()));
}

void tst_ThemeKeys::schemaHasTheKeys()
{
    const auto keys = [](const QJsonObject &schema) {
        return schema.value(QLatin1String("properties")).toObject().keys();
    };
    QCOMPARE(keys(themeSchema()), sorted(ThemeKeys::names(ThemeKey::Document)));
    QCOMPARE(keys(definition("scope")), sorted(ThemeKeys::names(ThemeKey::Scope)));
    QCOMPARE(keys(definition("colors")), sorted(ThemeKeys::names(ThemeKey::Colors)));
    QCOMPARE(keys(definition("fonts")), sorted(ThemeKeys::names(ThemeKey::Fonts)));
    QCOMPARE(keys(definition("font")), sorted(ThemeKeys::names(ThemeKey::Font)));
    for (const char *name : { "scope", "colors", "fonts", "font" })
        QCOMPARE(keys(definition((QByteArray(name) + "InClass").constData())),
                 keys(definition(name)));
}

void tst_ThemeKeys::referenceIsInTheDocumentation()
{
    QFile page(QStringLiteral(TAVOLINS_SOURCE_DIR "/docs/theme-files.md"));
    QVERIFY(page.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(page.readAll());
    const QString begin = QStringLiteral("<!-- begin: tavolins schema --format markdown -->\n\n");
    const QString end = QStringLiteral("\n<!-- end -->\n");
    const auto from = text.indexOf(begin) + begin.size();
    const auto to = text.indexOf(end);
    QVERIFY(from >= begin.size() && to > from);
    QCOMPARE(text.mid(from, to - from), themeReference());
}

TAVOLINS_TEST_MAIN(tst_ThemeKeys)
#include "tst_themekeys.moc"
