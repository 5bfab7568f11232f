#include "checker/effectivevalues.h"

#include "checker/loadedfolder.h"
#include "manager/thememanager.h"
#include "support/randomthemes.h"
#include "support/testcase.h"
#include "support/themevalues.h"
#include "theme/theme.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtGui/QFontDatabase>
#include <QtGui/QPalette>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtTest/QtTest>

class tst_EffectiveValues : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void origins_data();
    void origins();
    void classValueByPath_data();
    void classValueByPath();
    void foldersDoNotMix();
    void tellsWhichFilesAreLeftOut();
    void agreesWithItemsOfAnEngine();
    void originsHoldWhatTheyTell();

private:
    void writeFiles(const QHash<QString, QByteArray> &files);
};

namespace {

const char readerSource[] = "import QtQuick 2.12\n"
                            "import " TAVOLINS_QML_URI " 1.0\n"
                            "Item {\n"
                            "    function read(key) {\n"
                            "        var path = key.split('/')\n"
                            "        if (path[0] === 'styles')\n"
                            "            return Theme.getStyle(path[1], Theme.classnames)\n"
                            "        var value = Theme\n"
                            "        for (var i = 0; i < path.length; ++i)\n"
                            "            value = value[path[i]]\n"
                            "        return value\n"
                            "    }\n"
                            "    function use(classnames) { Theme.classnames = classnames }\n"
                            "    readonly property color bound: Theme.colors.foreground\n"
                            "    readonly property var manager: ThemeManager\n"
                            "}\n";

/// An item of an engine that imports the built module.
class EngineItem
{
public:
    explicit EngineItem(QQmlEngine *engine)
    {
        QQmlComponent component(engine);
        component.setData(readerSource, QUrl());
        m_item.reset(component.create());
        if (!m_item)
            qFatal("%s", qPrintable(component.errorString()));
    }

    QObject *get() const { return m_item.get(); }

    void use(const QString &classnames)
    {
        QMetaObject::invokeMethod(m_item.get(), "use", Q_ARG(QVariant, classnames));
    }

    QVariant read(const QString &key) const
    {
        QVariant result;
        QMetaObject::invokeMethod(m_item.get(), "read",
                                  Q_RETURN_ARG(QVariant, result), Q_ARG(QVariant, key));
        return result;
    }

private:
    std::unique_ptr<QObject> m_item;
};

/// \a value, which an item reads under \a key, as EffectiveValues has it.
QVariant normalized(const QString &key, const QVariant &value)
{
    static const char *const words[] = { "MixedCase", "AllUppercase", "AllLowercase", "SmallCaps",
                                         "Capitalize" };
    if (key.endsWith(QLatin1String("/capitalization")))
        return QString::fromLatin1(words[value.toInt()]);
    return value;
}

/// The JSON value that begins at \a position of the file at \a path.
QJsonValue valueAt(const QString &path, Position position)
{
    const Document document = Document::read(path);
    QByteArray text = document.line(position.line);
    // Columns count characters.
    text = QString::fromUtf8(text).mid(position.column - 1).toUtf8();
    QJsonParseError error;
    // As the first element of an array, up to where the value ends.
    for (int size = 1; size <= text.size(); ++size) {
        const QJsonArray array =
                QJsonDocument::fromJson('[' + text.left(size) + ']', &error).array();
        const char next = size < text.size() ? text.at(size) : ',';
        if (error.error == QJsonParseError::NoError && array.size() == 1
            && (next == ',' || next == '}' || next == ']' || next == ' '))
            return array.first();
    }
    return QJsonValue(QJsonValue::Undefined);
}

QString described(const EffectiveValue &value)
{
    return QStringLiteral("%1 = %2: %3 %4:%5:%6 %7 %8 %9")
            .arg(value.key, value.value.toString())
            .arg(int(value.origin.kind))
            .arg(value.origin.file.section(QLatin1Char('/'), -1))
            .arg(value.origin.position.line)
            .arg(value.origin.position.column)
            .arg(value.origin.scope, value.origin.base, value.origin.rule);
}

/// What has to be written where \a value was read from, so that it comes to \a value.
bool isWrittenAs(const EffectiveValue &value, const QJsonValue &text)
{
    const QString attribute = value.key.section(QLatin1Char('/'), -1);
    if (value.key.startsWith(QLatin1String("class/")))
        return value.value == (text.isNull() ? QVariant() : text.toVariant());
    if (value.value.userType() == QMetaType::QColor)
        return QColor(text.toString()) == value.value.value<QColor>();
    if (attribute == QLatin1String("pointSize"))
        return qFuzzyCompare(text.toDouble() * 0.75, value.value.toDouble());
    if (attribute == QLatin1String("weight"))
        return text.toString() == QLatin1String("Bold") ? value.value.toInt() == QFont::Bold
                                                        : !text.toString().isEmpty();
    if (attribute == QLatin1String("capitalization"))
        return text.toString().toLower() == value.value.toString().toLower();
    return text.toVariant() == value.value
            || (text.isDouble() && text.toDouble() == value.value.toDouble());
}

/// What \a rule makes of \a base.
QVariant made(const QString &rule, const QVariant &base)
{
    if (rule == ValueOrigin::same())
        return base;
    if (rule.startsWith(QLatin1String("twice as bright")))
        return QColor(base.value<QColor>().lighter(200).name());
    if (rule.startsWith(QLatin1String("half as bright")))
        return QColor(base.value<QColor>().darker(200).name());
    if (rule.startsWith(QLatin1String("0.75 of it")))
        return base.toDouble() * 0.75;
    const double sum = base.toDouble() + rule.section(QLatin1Char(' '), 0, 0).toDouble();
    return rule.endsWith(QLatin1String("cut to whole points")) ? QVariant(int(sum)) : sum;
}

bool isAlike(const QVariant &a, const QVariant &b)
{
    const bool areNumbers = a.userType() == QMetaType::Double || b.userType() == QMetaType::Double;
    return areNumbers ? qAbs(a.toDouble() - b.toDouble()) < 0.001 : a == b;
}

} // namespace

void tst_EffectiveValues::writeFiles(const QHash<QString, QByteArray> &files)
{
    QDir(folder()).removeRecursively();
    QDir().mkpath(folder());
    for (auto file = files.begin(); file != files.end(); ++file)
        write(file.key(), file.value());
}

void tst_EffectiveValues::origins_data()
{
    QTest::addColumn<QString>("theme");
    QTest::addColumn<QString>("classnames");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char *name, const char *theme, const char *classnames,
                        const char *key, const char *expected) {
        QTest::newRow(name) << QString::fromLatin1(theme) << QString::fromLatin1(classnames)
                            << QString::fromLatin1(key) << QString::fromUtf8(expected);
    };
    row("written in global", "Base", "", "colors/foreground",
        "#112233 written base.thm:4:35 global");
    row("shade of a written color", "Base", "", "colors/darkerForeground",
        "#081119 derived base.thm:4:35 global, half as bright, opaque: colors/foreground");
    row("shade of a default color", "Base", "", "colors/lighterBackground",
        "#ffffff derived, twice as bright, opaque: colors/background");
    row("default color", "Base", "", "colors/selection",
        "#ffffff default, the application's highlighted text");
    row("what is no color counts as missing", "Base", "", "colors/darkerBackground",
        "#777777 default, the application's windows, half as bright");
    row("radius", "Base", "", "radius", "6 written base.thm:6:19 global");
    row("radius of a class is not the item's", "Base", "header", "radius",
        "6 written base.thm:6:19 global");
    row("class", "Base", "header", "colors/foreground", "#445566 written base.thm:8:56 header");
    row("what the class leaves out", "Base", "header", "colors/darkerForeground",
        "#081119 derived base.thm:4:35 global, half as bright, opaque, as it is without the class: "
        "colors/foreground");
    row("the first class decides", "Base", "code header", "colors/foreground",
        "#778899 written base.thm:9:41 code");
    row("an empty class is passed over", "Base", "empty header", "colors/foreground",
        "#445566 written base.thm:8:56 header");
    row("an unknown class is passed over", "Base", "nothing header", "colors/foreground",
        "#445566 written base.thm:8:56 header");
    row("inherited color", "Heir", "", "colors/foreground",
        "#112233 written base.thm:4:35 global, inherited from Base");
    row("inherited class", "Heir", "code", "colors/foreground",
        "#778899 written base.thm:9:41 code, inherited from Base");
    row("a class of one's own", "Heir", "header", "colors/foreground",
        "#aabbcc written heir.thm:3:42 header");
    row("over two generations", "Grandchild", "code", "colors/foreground",
        "#778899 written base.thm:9:41 code, inherited from Base");
    row("an own global discards inherited colors", "Grandchild", "", "colors/foreground",
        "#000000 default, the application's window text");
    row("an own global discards the inherited radius", "Grandchild", "", "radius",
        "2 written z.thm:3:27 global");
    row("family", "Base", "", "fonts/mainFont/family", "DejaVu Serif written base.thm:5:40 global");
    row("size is scaled", "Base", "", "fonts/mainFont/pointSize",
        "12 written base.thm:5:69 global");
    row("heading left out is the font before it", "Base", "", "fonts/h1Font/family",
        "DejaVu Serif derived base.thm:5:40 global, the same: fonts/alternateFont/family");
    row("size of a heading left out", "Base", "", "fonts/h3Font/pointSize",
        "15 derived base.thm:5:69 global, 3 points more, cut to whole points: "
        "fonts/mainFont/pointSize");
    row("fonts of a class", "Base", "header", "fonts/mainFont/family",
        "DejaVu Serif written base.thm:5:40 global");
    row("last class has the class value", "Base", "header code", "class/spacing/small",
        "8 written base.thm:9:75 code");
    row("only class that has the class value", "Base", "header code", "class/spacing/large",
        "5 written base.thm:8:103 header");
    row("plain style", "Base", "", "styles/Button", "Button.qml file");
    row("variant of a style", "Base", "code header", "styles/Button",
        "Button_header.qml file header");
    row("variant without a plain style", "Base", "code", "styles/Card", "Card_code.qml file code");
}

void tst_EffectiveValues::origins()
{
    QFETCH(QString, theme);
    QFETCH(QString, classnames);
    QFETCH(QString, key);
    QFETCH(QString, expected);
    write(QStringLiteral("base.thm"),
          "{\n"
          "    \"title\": \"Base\",\n"
          "    \"global\": {\n"
          "        \"colors\": { \"foreground\": \"#112233\", \"darkerBackground\": \"bleu\" },\n"
          "        \"fonts\": { \"main\": { \"family\": \"DejaVu Serif\", \"pointSize\": 16 } },\n"
          "        \"radius\": 6\n"
          "    },\n"
          "    \"header\": { \"radius\": 9, \"colors\": { \"foreground\": \"#445566\" }, "
          "\"spacing\": { \"small\": 4, \"large\": 5 } },\n"
          "    \"code\": { \"colors\": { \"foreground\": \"#778899\" }, \"spacing\": "
          "{\"small\": "
          "8} },\n"
          "    \"empty\": {}\n"
          "}\n");
    write(QStringLiteral("heir.thm"),
          "{\n"
          "    \"title\": \"Heir\", \"extends\": \"Base\",\n"
          "    \"header\": { \"colors\": {\"foreground\": \"#aabbcc\" } }\n"
          "}\n");
    write(QStringLiteral("z.thm"),
          "{\n"
          "    \"title\": \"Grandchild\", \"extends\": \"Heir\",\n"
          "    \"global\": { \"radius\": 2 }\n"
          "}\n");
    for (const char *style : { "Button", "Button_header", "Card_code" })
        write(QStringLiteral("styles/%1.qml").arg(QLatin1String(style)), "");

    const LoadedFolder themes(folder());
    QVERIFY(themes.titled(theme));
    const EffectiveValues values = EffectiveValues::of(themes, themes.titled(theme), classnames);
    const EffectiveValue *value = values.find(key);
    QVERIFY2(value, qPrintable(key));
    static const char *const kinds[] = { "default", "written", "derived", "file" };
    const ValueOrigin &origin = value->origin;
    const bool isFile = origin.kind == ValueOrigin::File;
    QString actual = value->value.userType() == QMetaType::QColor
            ? value->value.value<QColor>().name()
            : isFile ? origin.file.section(QLatin1Char('/'), -1)
                     : value->value.toString();
    actual += QLatin1Char(' ') + QLatin1String(kinds[origin.kind]);
    if (!isFile && !origin.file.isEmpty())
        actual += QStringLiteral(" %1:%2:%3")
                          .arg(origin.file.section(QLatin1Char('/'), -1))
                          .arg(origin.position.line)
                          .arg(origin.position.column);
    if (!origin.scope.isEmpty())
        actual += QLatin1Char(' ') + origin.scope;
    if (!origin.inheritedFrom.isEmpty())
        actual += QStringLiteral(", inherited from ") + origin.inheritedFrom;
    if (!origin.rule.isEmpty())
        actual += QStringLiteral(", ") + origin.rule;
    if (!origin.base.isEmpty())
        actual += QStringLiteral(": ") + origin.base;
    QCOMPARE(actual, expected);
}

void tst_EffectiveValues::classValueByPath_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QVariant>("expected");
    QTest::addColumn<bool>("exists");
    QTest::newRow("member") << QStringLiteral("text") << QVariant(QStringLiteral("x")) << true;
    QTest::newRow("object") << QStringLiteral("a")
                            << QVariant(QVariantMap{ { QStringLiteral("b"), 1.0 } }) << true;
    QTest::newRow("doubled slashes") << QStringLiteral("/a//b") << QVariant(1.0) << true;
    QTest::newRow("color as it is written")
            << QStringLiteral("colors/foreground") << QVariant(QStringLiteral("blu")) << true;
    QTest::newRow("null") << QStringLiteral("none") << QVariant() << true;
    QTest::newRow("missing") << QStringLiteral("a/c") << QVariant() << false;
    QTest::newRow("no path") << QStringLiteral("/") << QVariant() << false;
}

void tst_EffectiveValues::classValueByPath()
{
    QFETCH(QString, path);
    QFETCH(QVariant, expected);
    QFETCH(bool, exists);
    write(QStringLiteral("a.thm"),
          R"({"title": "A", "c": {"text": "x", "a": {"b": 1}, "none": null,
              "colors": {"foreground": "blu"}}})");
    const LoadedFolder themes(folder());
    const EffectiveValue value = EffectiveValues::classValue(themes, themes.themes().constFirst(),
                                                             QStringLiteral("c d"), path);
    QCOMPARE(value.value, expected);
    QCOMPARE(value.origin.kind == ValueOrigin::Written, exists);
}

void tst_EffectiveValues::foldersDoNotMix()
{
    write(QStringLiteral("one/base.thm"), R"({"title": "Base", "global": {"radius": 1}})");
    write(QStringLiteral("two/heir.thm"), R"({"title": "Heir", "extends": "Base"})");
    {
        const LoadedFolder one(folder() + QStringLiteral("/one"));
        QCOMPARE(one.themes().size(), 1);
    }
    const LoadedFolder two(folder() + QStringLiteral("/two"));
    QVERIFY(two.themes().isEmpty());
}

void tst_EffectiveValues::tellsWhichFilesAreLeftOut()
{
    write(QStringLiteral("a.thm"), R"({"title": "A"})");
    const QString empty = write(QStringLiteral("empty.thm"), "");
    const QString orphan = write(QStringLiteral("orphan.thm"), R"({"extends": "Nobody"})");
    const LoadedFolder themes(folder());
    QCOMPARE(themes.leftOut(), (QStringList{ empty, orphan }));
    QVERIFY(themes.fromFile(folder() + QStringLiteral("/a.thm")));
    QVERIFY(!themes.fromFile(empty));
}

void tst_EffectiveValues::agreesWithItemsOfAnEngine()
{
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral(TAVOLINS_QML_IMPORT_PATH));
    EngineItem item(&engine);
    int compared = 0;
    int classValues = 0;
    for (unsigned seed = 0; seed < 250; ++seed) {
        RandomThemes random(seed);
        writeFiles(random.folder());
        const QString classnames = random.classnames();
        const LoadedFolder themes(folder());
        const QList<Theme *> loaded = themes.themes();
        for (Theme *theme : loaded) {
            const EffectiveValues values = EffectiveValues::of(themes, theme, classnames);
            // The global theme keeps classes and styles of all themes that were current before; in
            // an application that has just started there are none.
            dataOf(*Theme::global())->initDefaults();
            ThemeManager::getInstance()->setCurrent(theme);
            item.use(classnames);
            for (const EffectiveValue &value : values.values) {
                ++compared;
                QVariant read;
                if (value.key.startsWith(QLatin1String("class/"))) {
                    ++classValues;
                    read = Theme::attachedTheme(item.get())
                                   ->getClassValue(value.key.mid(6), QVariant());
                } else {
                    read = normalized(value.key, item.read(value.key));
                }
                QVERIFY2(read == value.value || isAlike(read, value.value),
                         qPrintable(QStringLiteral("seed %1, %2, \"%3\": %4 is %5")
                                            .arg(seed)
                                            .arg(theme->filename(), classnames, described(value),
                                                 read.toString())));
            }
        }
        deleteDeferred();
    }
    QVERIFY(compared > 20000);
    QVERIFY(classValues > 50);
}

void tst_EffectiveValues::originsHoldWhatTheyTell()
{
    const QPalette palette;
    int counts[4] = {};
    for (unsigned seed = 1000; seed < 1150; ++seed) {
        RandomThemes random(seed);
        writeFiles(random.folder());
        const QString classnames = random.classnames();
        const LoadedFolder themes(folder());
        const QList<Theme *> loaded = themes.themes();
        for (Theme *theme : loaded) {
            const EffectiveValues plain = EffectiveValues::of(themes, theme, QString());
            const EffectiveValues values = EffectiveValues::of(themes, theme, classnames);
            for (const EffectiveValue &value : values.values) {
                const QByteArray what = QStringLiteral("seed %1, %2, \"%3\": %4")
                                                .arg(seed)
                                                .arg(theme->filename(), classnames,
                                                     described(value))
                                                .toUtf8();
                const ValueOrigin &origin = value.origin;
                ++counts[origin.kind];
                const bool isOwn = origin.file == theme->filename();
                switch (origin.kind) {
                case ValueOrigin::Written:
                    QVERIFY2(isWrittenAs(value, valueAt(origin.file, origin.position)),
                             what.constData());
                    QVERIFY2(isOwn == origin.inheritedFrom.isEmpty() || !isOwn, what.constData());
                    break;
                case ValueOrigin::Derived: {
                    const bool isPlain = origin.rule.contains(QLatin1String("without the class"));
                    const EffectiveValue *base = (isPlain ? plain : values).find(origin.base);
                    QVERIFY2(base, what.constData());
                    QVERIFY2(isAlike(made(origin.rule, base->value), value.value),
                             what.constData());
                    break;
                }
                case ValueOrigin::Default:
                    if (origin.rule == QLatin1String("the application's window text"))
                        QCOMPARE(value.value.value<QColor>(), palette.color(QPalette::WindowText));
                    if (origin.rule
                        == QLatin1String("the application's windows, half as bright again"))
                        QCOMPARE(value.value.value<QColor>(),
                                 palette.color(QPalette::Window).lighter(150));
                    if (origin.rule == QLatin1String("the application's font")
                        && value.key.endsWith(QLatin1String("pointSize")))
                        QCOMPARE(value.value.toDouble(), QFont().pointSizeF());
                    if (origin.rule == QLatin1String("the application's font, 0.75 of its size"))
                        QCOMPARE(value.value.toDouble(), QFont().pointSizeF() * 0.75);
                    break;
                case ValueOrigin::File:
                    QVERIFY2(QFile::exists(origin.file), what.constData());
                    break;
                }
            }
        }
        deleteDeferred();
    }
    for (const int count : counts)
        QVERIFY(count > 100);
}

TAVOLINS_TEST_MAIN(tst_EffectiveValues)
#include "tst_effectivevalues.moc"
