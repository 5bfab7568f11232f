#include "manager/thememanager.h"
#include "support/testcase.h"
#include "support/themetext.h"
#include "theme/theme.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QMetaProperty>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

#if defined(Q_OS_UNIX)
#include <sys/stat.h>
#include <unistd.h>
#endif

/// Folders of theme files as people really have them: broken ones beside fine ones. Whatever a
/// broken one does, the fine ones load, in their order.
class tst_BadInput : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void everythingSideBySide();
    void badFile_data();
    void badFile();
    void unreadableFile();
    void readErrors();
    void wrongTypes_data();
    void wrongTypes();
    void valuesThatNameNothing_data();
    void valuesThatNameNothing();
    void sizes_data();
    void sizes();
    void classNames_data();
    void classNames();
    void extendsOrders_data();
    void extendsOrders();

private:
    QStringList load();
    void compareWithUnknown(const QString &path, const QJsonValue &value);
};

namespace {

QStringList titles(const QAbstractItemModel &model, int from = 0)
{
    QStringList result;
    for (int row = from; row < model.rowCount(); ++row)
        result.append(model.index(row, 0).data().toString());
    return result;
}

QByteArray document(const QJsonObject &object)
{
    return QJsonDocument(object).toJson();
}

/// \a value at the end of \a path, wrapped into the objects on the way.
QJsonObject nested(const QStringList &path, const QJsonValue &value)
{
    QJsonObject object{ { path.last(), value } };
    for (int i = path.size() - 2; i >= 0; --i)
        object = QJsonObject{ { path.at(i), object } };
    return object;
}

/// All that a theme shows, for comparing two of them. Colors as their text: shades that are the
/// defaults are finer than those derived, which have been such a text.
QStringList shown(const Theme &theme)
{
    QStringList values{ QString::number(theme.radius()) };
    for (const QObject *group :
         { static_cast<QObject *>(theme.colors()), static_cast<QObject *>(theme.fonts()) }) {
        const QMetaObject *type = group->metaObject();
        for (int i = type->propertyOffset(); i < type->propertyCount(); ++i) {
            const QVariant value = type->property(i).read(group);
            values.append(QLatin1String(type->property(i).name()) + QLatin1Char(' ')
                          + (value.userType() == QMetaType::QColor
                                     ? value.value<QColor>().name(QColor::HexArgb)
                                     : value.toString()));
        }
    }
    return values;
}

#if defined(Q_OS_UNIX)
/// Access rights hold for others than root only.
class Unprivileged
{
public:
    Unprivileged()
        : m_wasRoot(geteuid() == 0 && seteuid(nobody) == 0)
    {
    }
    ~Unprivileged()
    {
        if (m_wasRoot && seteuid(0) != 0)
            qFatal("can't become root again");
    }

    Unprivileged(const Unprivileged &) = delete;
    Unprivileged &operator=(const Unprivileged &) = delete;

private:
    static constexpr uid_t nobody = 65534;
    const bool m_wasRoot;
};
#endif

const QStringList fineOnes = { QStringLiteral("First"), QStringLiteral("Middle"),
                               QStringLiteral("Last") };

} // namespace

void tst_BadInput::initTestCase()
{
    ThemeManager::getInstance();
}

/// Puts fine themes before, between and behind what the test has written (named b to y), and
/// returns the titles of what a new catalogue finds.
QStringList tst_BadInput::load()
{
    write(QStringLiteral("a.thm"), coloredThemeText(fineOnes.at(0), 1, "#010101"));
    write(QStringLiteral("m.thm"), coloredThemeText(fineOnes.at(1), 2, "#020202"));
    write(QStringLiteral("z.thm"), coloredThemeText(fineOnes.at(2), 3, "#030303"));
    ThemeManager manager;
    manager.loadThemes(folder(), fineOnes.last());
    for (int i = 0; i < fineOnes.size(); ++i) {
        const Theme *theme = manager.themeFromName(fineOnes.at(i));
        if (!theme || theme->radius() != i + 1
            || theme->colors()->foreground() != QColor(i + 1, i + 1, i + 1)) {
            return QStringList(QStringLiteral("not fine: ") + fineOnes.at(i));
        }
    }
    if (manager.current()->title() != fineOnes.last())
        return QStringList(QStringLiteral("not current: ") + fineOnes.last());
    return titles(manager);
}

void tst_BadInput::everythingSideBySide()
{
    write(QStringLiteral("b.thm"), QByteArray());
    write(QStringLiteral("c.thm"), "{ not json");
    write(QStringLiteral("d.thm"), "[1, 2, 3]");
    write(QStringLiteral("e.thm/inside.thm"), themeText(QStringLiteral("inside"), 1));
    write(QStringLiteral("f.thm"), "{\"title\": 5, \"global\": [], \"header\": \"x\"}");
    write(QStringLiteral("g.thm"),
          themeText(QStringLiteral("Orphan"), 1, "\"extends\": \"Nobody\""));
    write(QStringLiteral("n.thm"), "{\"title\": \"Self\", \"extends\": \"Self\"}");
    write(QStringLiteral("o.thm"),
          "{\"title\": \"Wild\", \"global\": {\"radius\": 1e999, \"colors\": {\"foreground\": "
          "\"nonsense\", \"background\": 7}, \"fonts\": {\"main\": {\"pointSize\": -4, "
          "\"weight\": \"Nonsense\"}}}}");
    write(QStringLiteral("p.thm"), QByteArray(1, '\0'));
    expectOpenFailure(); // the folder

    // Text that is no object is a theme without a title; so is one whose title is no text.
    QCOMPARE(load(),
             QStringList({ fineOnes.at(0), QString(), QString(), QString(), fineOnes.at(1),
                           QString(), QString(), fineOnes.at(2) }));
}

void tst_BadInput::badFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("added");

    const QStringList none;
    const QStringList untitled{ QString() };
    const QStringList titled{ QStringLiteral("T") };
    const QByteArray fine = themeText(titled.first(), 9);
    const int deep = 10000;

    QTest::newRow("empty") << QByteArray() << none;
    QTest::newRow("only a space") << QByteArray(" ") << untitled;
    QTest::newRow("only a newline") << QByteArray("\n") << untitled;
    QTest::newRow("one zero byte") << QByteArray(1, '\0') << untitled;
    QTest::newRow("invalid JSON") << QByteArray("{\"title\": \"T\"") << untitled;
    QTest::newRow("trailing comma") << QByteArray("{\"title\": \"T\",}") << untitled;
    QTest::newRow("comment") << "// a theme\n" + fine << untitled;
    QTest::newRow("text behind it") << fine + "x" << untitled;
    QTest::newRow("two documents") << fine + fine << untitled;
    QTest::newRow("single quotes") << QByteArray("{'title': 'T'}") << untitled;
    QTest::newRow("array at the top") << QByteArray("[]") << untitled;
    QTest::newRow("array of themes") << "[" + fine + "]" << untitled;
    QTest::newRow("number at the top") << QByteArray("12") << untitled;
    QTest::newRow("text at the top") << QByteArray("\"T\"") << untitled;
    QTest::newRow("null at the top") << QByteArray("null") << untitled;
    QTest::newRow("empty object") << QByteArray("{}") << untitled;
    QTest::newRow("not UTF-8") << QByteArray("{\"title\": \"\xff\xfe\"}") << untitled;
    QTest::newRow("UTF-16") << QByteArray("\xff\xfe{\0}\0", 6) << untitled;
    QTest::newRow("binary") << QByteArray("\x7f"
                                          "ELF\2\1\1\0\0\0\0\0",
                                          12)
                            << untitled;
    QTest::newRow("byte order mark") << "\xef\xbb\xbf" + fine << titled;
    QTest::newRow("two of one key: the last one")
            << QByteArray("{\"title\": \"S\", \"title\": \"T\"}") << titled;
    QTest::newRow("nested too deeply")
            << "{\"title\": \"T\", \"x\": " + QByteArray(deep, '[') + QByteArray(deep, ']') + "}"
            << untitled;
    QTest::newRow("a megabyte of text")
            << themeText(titled.first(), 9, "\"x\": {\"y\": \"" + QByteArray(1 << 20, 'y') + "\"}")
            << titled;
    QTest::newRow("ten thousand classes") << [&] {
        QByteArray classes;
        for (int i = 0; i < 10000; ++i)
            classes += (i ? ", \"c" : "\"c") + QByteArray::number(i) + "\": {\"radius\": 1}";
        return themeText(titled.first(), 9, classes);
    }() << titled;
}

void tst_BadInput::badFile()
{
    QFETCH(const QByteArray, content);
    QFETCH(const QStringList, added);

    write(QStringLiteral("b.thm"), content);
    write(QStringLiteral("n.thm"), content);
    QCOMPARE(load(),
             QStringList(fineOnes.at(0)) + added + QStringList(fineOnes.at(1)) + added
                     + QStringList(fineOnes.at(2)));
}

void tst_BadInput::unreadableFile()
{
#if defined(Q_OS_UNIX)
    const QString path = write(QStringLiteral("b.thm"), themeText(QStringLiteral("Secret"), 1));
    QCOMPARE(chmod(QFile::encodeName(folder()).constData(), 0777), 0);
    QCOMPARE(chmod(QFile::encodeName(path).constData(), 0), 0);
    {
        const Unprivileged rights;
        QVERIFY(!QFile(path).open(QIODevice::ReadOnly));
        expectOpenFailure();
        QCOMPARE(load(), fineOnes);
    }
#else
    QSKIP("access rights as here are those of Unix");
#endif
}

void tst_BadInput::readErrors()
{
#if defined(Q_OS_LINUX)
    // Opens, but its first byte can't be read; counts as empty, so without a message.
    QVERIFY(QFile::link(QStringLiteral("/proc/self/mem"), folder() + QLatin1String("/b.thm")));
    QCOMPARE(load(), fineOnes);
#else
    QSKIP("needs a file whose reading fails");
#endif
}

void tst_BadInput::wrongTypes_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QJsonValue>("value");

    enum Kind { Text, Object, Number, Truth, List, Null };
    const QVector<QPair<const char *, QJsonValue>> values = {
        { "text", QStringLiteral("x") },
        { "object", QJsonObject{ { QStringLiteral("x"), 1 } } },
        { "number", 3.5 },
        { "truth", true },
        { "list", QJsonArray{ 1 } },
        { "null", QJsonValue() },
    };
    const auto member = [&](const QString &path, Kind right) {
        for (int kind = 0; kind < values.size(); ++kind) {
            if (kind == right)
                continue;
            QTest::newRow(
                    qPrintable(path + QLatin1String(" as ") + QLatin1String(values.at(kind).first)))
                    << path << values.at(kind).second;
        }
    };
    member(QStringLiteral("extends"), Text);
    member(QStringLiteral("global"), Object);
    member(QStringLiteral("global/radius"), Number);
    member(QStringLiteral("global/colors"), Object);
    for (const char *color : { "foreground", "lighterForeground", "darkerForeground", "background",
                               "lighterBackground", "darkerBackground", "selection" }) {
        member(QLatin1String("global/colors/") + QLatin1String(color), Text);
    }
    member(QStringLiteral("global/fonts"), Object);
    for (const char *font : { "main", "alternate", "h1", "h2", "h3", "h4" })
        member(QLatin1String("global/fonts/") + QLatin1String(font), Object);
    member(QStringLiteral("global/fonts/main/family"), Text);
    member(QStringLiteral("global/fonts/main/pointSize"), Number);
    member(QStringLiteral("global/fonts/main/bold"), Truth);
    member(QStringLiteral("global/fonts/main/italic"), Truth);
    member(QStringLiteral("global/fonts/main/capitalization"), Text);
    member(QStringLiteral("global/fonts/main/letterSpacing"), Number);
    member(QStringLiteral("global/fonts/main/weight"), Text);
    member(QStringLiteral("someClass"), Object);
}

void tst_BadInput::wrongTypes()
{
    QFETCH(const QString, path);
    QFETCH(const QJsonValue, value);

    compareWithUnknown(path, value);
}

/// A member whose value is of no use is as good as none: the theme looks like one that has an
/// unknown member in its place.
void tst_BadInput::compareWithUnknown(const QString &path, const QJsonValue &value)
{
    const QStringList names = path.split(QLatin1Char('/'));
    QStringList unknown = names;
    unknown.last() = QStringLiteral("unknown");
    const auto text = [&](const QStringList &at, const QJsonValue &content, const char *title) {
        QJsonObject object = nested(at, content);
        object.insert(QStringLiteral("title"), QLatin1String(title));
        return document(object);
    };
    write(QStringLiteral("b.thm"), text(names, value, "Bad"));
    write(QStringLiteral("n.thm"), text(unknown, 0, "Good"));
    QCOMPARE(load(),
             QStringList({ fineOnes.at(0), QStringLiteral("Bad"), fineOnes.at(1),
                           QStringLiteral("Good"), fineOnes.at(2) }));

    Theme bad;
    QCOMPARE(bad.load(folder() + QLatin1String("/b.thm")), 0);
    Theme good;
    QCOMPARE(good.load(folder() + QLatin1String("/n.thm")), 0);
    QCOMPARE(shown(bad), shown(good));
    bad.setClassnames(names.first());
    QVERIFY(bad.hasClassname(names.first()));
    QCOMPARE(shown(bad), shown(good));
}

void tst_BadInput::valuesThatNameNothing_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QJsonValue>("value");

    for (const char *color : { "", " ", "nonsense", "#", "#12", "#12345", "#gggggg", "rgb(1,2,3)",
                               "0x123456", "#1234567", "black;", "\t" }) {
        QTest::newRow(QByteArray("color '") + color + '\'')
                << QStringLiteral("global/colors/foreground")
                << QJsonValue(QString::fromLatin1(color));
    }
    for (const char *weight : { "nonsense", " ", "75", "-1", "bold italic nonsense" }) {
        QTest::newRow(QByteArray("weight '") + weight + '\'')
                << QStringLiteral("global/fonts/main/weight")
                << QJsonValue(QString::fromLatin1(weight));
    }
    for (const char *capitals : { "nonsense", "small caps", "AllUppercase ", "upper" }) {
        QTest::newRow(QByteArray("capitalization '") + capitals + '\'')
                << QStringLiteral("global/fonts/main/capitalization")
                << QJsonValue(QString::fromLatin1(capitals));
    }
}

void tst_BadInput::valuesThatNameNothing()
{
    QFETCH(const QString, path);
    QFETCH(const QJsonValue, value);

    compareWithUnknown(path, value);
}

void tst_BadInput::sizes_data()
{
    QTest::addColumn<QByteArray>("number");
    QTest::addColumn<int>("radius");
    QTest::addColumn<bool>("readable");

    QTest::newRow("zero") << QByteArray("0") << 0 << true;
    QTest::newRow("minus zero") << QByteArray("-0") << 0 << true;
    QTest::newRow("negative") << QByteArray("-1") << 0 << true;
    QTest::newRow("greatest") << QByteArray("2147483647") << 2147483647 << true;
    QTest::newRow("one too many") << QByteArray("2147483648") << 0 << true;
    QTest::newRow("huge") << QByteArray("1e300") << 0 << true;
    QTest::newRow("tiny") << QByteArray("1e-300") << 0 << true;
    QTest::newRow("fraction") << QByteArray("2.5") << 0 << true;
    QTest::newRow("whole with a point") << QByteArray("4.0") << 4 << true;
    QTest::newRow("whole with an exponent") << QByteArray("4e0") << 4 << true;
    QTest::newRow("beyond a double") << QByteArray("1e999") << 0 << false;
    QTest::newRow("NaN") << QByteArray("NaN") << 0 << false;
    QTest::newRow("Infinity") << QByteArray("Infinity") << 0 << false;
    QTest::newRow("NaN as text") << QByteArray("\"NaN\"") << 0 << true;
    QTest::newRow("number as text") << QByteArray("\"4\"") << 0 << true;
}

void tst_BadInput::sizes()
{
    QFETCH(const QByteArray, number);
    QFETCH(const int, radius);
    QFETCH(const bool, readable);

    // What is no JSON makes the document empty, so untitled.
    const QString path = write(QStringLiteral("b.thm"),
                               "{\"title\": \"Sized\", \"global\": {\"radius\": " + number + "}}");
    const QString fontPath = write(
            QStringLiteral("c.thm"),
            "{\"title\": \"Sized\", \"global\": {\"fonts\": {\"main\": {\"pointSize\": " + number
                    + ", \"letterSpacing\": " + number + "}}}}");
    const QString title = readable ? QStringLiteral("Sized") : QString();
    QCOMPARE(load(), QStringList({ fineOnes.at(0), title, title, fineOnes.at(1), fineOnes.at(2) }));
    Theme theme;
    QCOMPARE(theme.load(path), 0);
    QCOMPARE(theme.radius(), radius);
    Theme fonts;
    QCOMPARE(fonts.load(fontPath), 0);
    QVERIFY(fonts.fonts()->mainFont().pointSizeF() > 0);
}

void tst_BadInput::classNames_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("classnames");
    QTest::addColumn<bool>("applies");

    const auto row = [](const char *name, const char *key, const char *classnames, bool applies) {
        QTest::newRow(name) << QString::fromUtf8(key) << QString::fromUtf8(classnames) << applies;
    };
    row("tab inside", "a\tb", "a\tb", true);
    row("tab is no space", "a\tb", "a b", false);
    row("tab does not separate", "a", "a\tb", false);
    row("newline inside", "a\nb", "a\nb", true);
    row("newline does not separate", "b", "a\nb", false);
    row("tabs and newlines around", "a", "\n\ta\n", true);
    row("accents", "\u00dcberschrift", "\u00dcberschrift", true);
    row("accents in another form", "\u00dc", "U\u0308", false);
    row("other alphabet", "\u0437\u0430\u0433\u043e\u043b\u043e\u0432\u043e\u043a",
        "x \u0437\u0430\u0433\u043e\u043b\u043e\u0432\u043e\u043a", true);
    row("beyond the first plane", "\U0001f319", "\U0001f319", true);
    row("no-break space does not separate", "a", "a\u00a0b", false);
    row("right to left", "\u05db\u05d5\u05ea\u05e8\u05ea", "\u05db\u05d5\u05ea\u05e8\u05ea", true);
    row("space in the key", "a b", "a b", false);
    row("empty key", "", "", false);
    row("empty key between two spaces", "", "x  y", false);
    row("quote and backslash", "\"\\", "\"\\", true);
    row("slash", "a/b", "a/b", true);
    row("letter case", "a", "A", false);
}

void tst_BadInput::classNames()
{
    QFETCH(const QString, key);
    QFETCH(const QString, classnames);
    QFETCH(const bool, applies);

    const QJsonObject scope{
        { QStringLiteral("colors"),
          QJsonObject{ { QStringLiteral("foreground"), QStringLiteral("#ff8800") } } }
    };
    write(QStringLiteral("b.thm"),
          document({ { QStringLiteral("title"), QStringLiteral("Classy") }, { key, scope } }));
    QCOMPARE(load(),
             QStringList(
                     { fineOnes.at(0), QStringLiteral("Classy"), fineOnes.at(1), fineOnes.at(2) }));
    Theme theme;
    QCOMPARE(theme.load(folder() + QLatin1String("/b.thm")), 0);
    QVERIFY(theme.colors()->foreground() != QColor(0xff, 0x88, 0));
    QSignalSpy changed(&theme, &Theme::themeObjectChanged);
    theme.setClassnames(classnames);
    QCOMPARE(changed.count(), classnames.isEmpty() ? 0 : 1);
    QCOMPARE(theme.colors()->foreground() == QColor(0xff, 0x88, 0), applies);
}

void tst_BadInput::extendsOrders_data()
{
    typedef QVector<QPair<QString, QString>> Files;
    QTest::addColumn<Files>("files");
    QTest::addColumn<QStringList>("loaded");

    const auto a = QStringLiteral("A");
    const auto b = QStringLiteral("B");
    const auto c = QStringLiteral("C");
    const auto d = QStringLiteral("D");
    const auto e = QStringLiteral("E");
    const QString nobody;
    QTest::newRow("itself") << Files{ { a, a }, { b, nobody } } << QStringList{ b };
    QTest::newRow("each other") << Files{ { a, b }, { b, a }, { c, nobody } } << QStringList{ c };
    QTest::newRow("ring of three")
            << Files{ { a, b }, { b, c }, { c, a }, { d, nobody } } << QStringList{ d };
    QTest::newRow("chain into a ring")
            << Files{ { a, b }, { b, c }, { c, c }, { d, nobody } } << QStringList{ d };
    QTest::newRow("nobody's title")
            << Files{ { a, QStringLiteral("X") }, { b, nobody } } << QStringList{ b };
    QTest::newRow("title in another letter case")
            << Files{ { a, nobody }, { b, QStringLiteral("a") } } << QStringList{ a };
    QTest::newRow("an earlier file")
            << Files{ { a, nobody }, { b, a }, { c, b } } << QStringList{ a, b, c };
    QTest::newRow("a later file") << Files{ { a, b }, { b, nobody }, { c, nobody } }
                                  << QStringList{ b, c, a };
    QTest::newRow("one two steps later")
            << Files{ { a, b }, { b, c }, { c, nobody }, { d, nobody } } << QStringList{ c, d, b };
    QTest::newRow("one three steps later")
            << Files{ { a, b }, { b, c }, { c, d }, { d, nobody } } << QStringList{ d, c };
    QTest::newRow("two steps, named in a good order")
            << Files{ { a, c }, { b, a }, { c, nobody } } << QStringList{ c, a, b };
    QTest::newRow("many of a later one")
            << Files{ { a, e }, { b, e }, { c, e }, { d, e }, { e, nobody } }
            << QStringList{ e, a, b, c, d };
    QTest::newRow("a title that two have")
            << Files{ { a, nobody }, { a, b }, { b, nobody } } << QStringList{ a, b, a };
}

void tst_BadInput::extendsOrders()
{
    typedef QVector<QPair<QString, QString>> Files;
    QFETCH(const Files, files);
    QFETCH(QStringList, loaded);

    // The parents are looked up in the catalogue of the process, which keeps what it has got.
    ThemeManager &manager = *ThemeManager::getInstance();
    const QString suffix = uniqueTitle("-extends");
    for (int i = 0; i < files.size(); ++i) {
        QJsonObject theme{ { QStringLiteral("title"), files.at(i).first + suffix } };
        if (!files.at(i).second.isEmpty())
            theme.insert(QStringLiteral("extends"), files.at(i).second + suffix);
        write(QStringLiteral("%1.thm").arg(i), document(theme));
    }
    const int before = manager.rowCount();
    manager.loadThemes(folder());
    for (QString &title : loaded)
        title += suffix;
    QCOMPARE(titles(manager, before), loaded);
}

TAVOLINS_TEST_MAIN(tst_BadInput)
#include "tst_badinput.moc"
