#include "manager/thememanager.h"
#include "readme/markdown.h"
#include "support/testcase.h"
#include "support/themetext.h"
#include "theme/theme.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtGui/QColor>
#include <QtGui/QFont>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

#include <algorithm>
#include <memory>

/// What a reader may copy from the README, run as it stands there: in the README's own application,
/// with the README's theme and a second one to switch to.
class tst_Readme : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanupTestCase();

    void exampleShowsTheExampleTheme();
    void exampleFollowsASwitch();
    void exampleFollowsSavesInPlace();
    void exampleHasASize();
    void exampleIsShort();

    void rows_data();
    void rows();
    void callAloneIsNotFollowed();

private:
    using Check = void (tst_Readme::*)(const QObject *, const QString &);
    static Check checkOf(const QString &row);

    void checkList(const QObject *object, const QString &title);
    void checkSwitching(const QObject *object, const QString &title);
    void checkCurrent(const QObject *object, const QString &title);
    void checkValues(const QObject *object, const QString &title);
    void checkClass(const QObject *object, const QString &title);
    void checkStyle(const QObject *object, const QString &title);
    void checkReadable(const QObject *object, const QString &title);

    QObject *createInExample(const QString &code);
    static QList<QQuickItem *> textsBelow(const QQuickItem *item);

    const Markdown m_readme{ QStringLiteral("README.md") };
    QTemporaryDir m_home;
    QQmlEngine m_engine;
    QQuickWindow m_window;
    std::unique_ptr<QObject> m_example;
    std::unique_ptr<QObject> m_added;
};

namespace {

const QString firstTitle = QStringLiteral("Harbour");
const QString secondTitle = QStringLiteral("Night");
const QString listRow = QStringLiteral("a list of the themes");
const QString switchingRow = QStringLiteral("switching");

ThemeManager &manager()
{
    return *ThemeManager::getInstance();
}

void switchTo(const QString &title)
{
    manager().setCurrent(manager().themeFromName(title));
}

QString withModule(QString code)
{
    return code.replace(QStringLiteral("import Tavolins "),
                        QStringLiteral("import " TAVOLINS_QML_URI " "));
}

void writeFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("can't write %s", qPrintable(path));
}

QByteArray styleText(const char *name)
{
    return QByteArray("import QtQuick 2.12\nItem { objectName: \"") + name + "\" }\n";
}

QColor colorOf(const QObject *object)
{
    return object->property("color").value<QColor>();
}

/// What the theme titled \a title shows of the two values.
template <typename Value>
Value of(const QString &title, const Value &first, const Value &second)
{
    return title == firstTitle ? first : second;
}

} // namespace

void tst_Readme::initTestCase()
{
    const auto home = [this](const char *name) { return m_home.filePath(QLatin1String(name)); };
    writeFile(home("themes/harbour.thm"), m_readme.only(QStringLiteral("json")).toUtf8());
    writeFile(home("themes/styles/Button.qml"), styleText("plain"));
    writeFile(home("themes/styles/Button_primary.qml"), styleText("first"));
    writeFile(home("night/night.thm"), R"({
        "title": "Night",
        "global": {
            "colors": { "foreground": "#ddeeff", "background": "#101820", "selection": "#405060" },
            "fonts": { "main": { "pointSize": 24 } },
            "radius": 9
        },
        "wide": {},
        "header": { "colors": { "foreground": "#ffcc66" } }
    })");
    writeFile(home("night/styles/Button_primary.qml"), styleText("second"));
    writeFile(home("harbour.qml"), withModule(m_readme.only(QStringLiteral("qml"))).toUtf8());

    m_engine.addImportPath(QStringLiteral(TAVOLINS_QML_IMPORT_PATH));
    QDir::setCurrent(m_home.path());
    QQmlComponent component(&m_engine, QUrl::fromLocalFile(home("harbour.qml")));
    m_example.reset(component.create());
    QVERIFY2(m_example, qPrintable(component.errorString()));
    auto *item = qobject_cast<QQuickItem *>(m_example.get());
    QVERIFY(item);
    item->setParentItem(m_window.contentItem());
    m_window.resize(item->size().toSize());
    m_window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&m_window));
    QCOMPARE(manager().current()->title(), firstTitle);
    manager().loadThemes(home("night"));
    QCOMPARE(manager().rowCount(), 2);
    QDir::setCurrent(QStringLiteral(TAVOLINS_SOURCE_DIR));
}

void tst_Readme::init()
{
    TestCase::init();
    m_added.reset();
    switchTo(firstTitle);
}

void tst_Readme::cleanupTestCase()
{
    m_added.reset();
    m_example.reset();
}

/// The texts that are shown below \a item, from top to bottom.
QList<QQuickItem *> tst_Readme::textsBelow(const QQuickItem *item)
{
    QList<QQuickItem *> texts;
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children) {
        if (child->inherits("QQuickText"))
            texts.append(child);
        texts += textsBelow(child);
    }
    std::sort(texts.begin(), texts.end(), [](const QQuickItem *a, const QQuickItem *b) {
        return a->mapToScene(QPointF()).y() < b->mapToScene(QPointF()).y();
    });
    return texts;
}

/// Adds what \a code declares to the example's rectangle, as if it stood there.
QObject *tst_Readme::createInExample(const QString &code)
{
    QQmlComponent component(&m_engine);
    component.setData(withModule(QStringLiteral("import QtQuick 2.12\nimport Tavolins 1.0\n%1\n"))
                              .arg(code)
                              .toUtf8(),
                      QUrl::fromLocalFile(m_home.filePath(QStringLiteral("added.qml"))));
    std::unique_ptr<QObject> object(component.beginCreate(m_engine.rootContext()));
    if (auto *item = qobject_cast<QQuickItem *>(object.get()))
        item->setParentItem(qobject_cast<QQuickItem *>(m_example.get()));
    component.completeCreate();
    if (!object)
        qWarning("%s", qPrintable(component.errorString()));
    m_added = std::move(object);
    return m_added.get();
}

void tst_Readme::exampleShowsTheExampleTheme()
{
    QCOMPARE(colorOf(m_example.get()), QColor(0xf4, 0xf7, 0xf9));
    QCOMPARE(m_example->property("radius").toInt(), 6);
    const QList<QQuickItem *> texts = textsBelow(qobject_cast<QQuickItem *>(m_example.get()));
    QCOMPARE(texts.size(), 2);
    QCOMPARE(colorOf(texts.at(0)), QColor(0x1d, 0x2b, 0x36));
    QCOMPARE(colorOf(texts.at(1)), QColor(0x0b, 0x5c, 0x8a));
}

void tst_Readme::exampleFollowsASwitch()
{
    switchTo(secondTitle);
    QCOMPARE(colorOf(m_example.get()), QColor(0x10, 0x18, 0x20));
    QCOMPARE(m_example->property("radius").toInt(), 9);
    const QList<QQuickItem *> texts = textsBelow(qobject_cast<QQuickItem *>(m_example.get()));
    QCOMPARE(colorOf(texts.at(0)), QColor(0xdd, 0xee, 0xff));
    QCOMPARE(colorOf(texts.at(1)), QColor(0xff, 0xcc, 0x66));
}

void tst_Readme::exampleFollowsSavesInPlace()
{
    const QString file = m_home.filePath(QStringLiteral("themes/harbour.thm"));
    const QByteArray original = m_readme.only(QStringLiteral("json")).toUtf8();
    for (const char *color : { "#a0b0c0", "#c0b0a0", "#f4f7f9" }) {
        QByteArray edited = original;
        writeFile(file, edited.replace("#f4f7f9", color));
        QTRY_COMPARE(colorOf(m_example.get()), QColor(QLatin1String(color)));
    }
}

void tst_Readme::exampleHasASize()
{
    QVERIFY(m_example->property("width").toInt() > 0);
    QVERIFY(m_example->property("height").toInt() > 0);
}

void tst_Readme::exampleIsShort()
{
    QCOMPARE(m_readme.only(QStringLiteral("qml")).trimmed().count(QLatin1Char('\n')) + 1, 10);
}

/// What looks at the object of the row \a row of the README's table.
tst_Readme::Check tst_Readme::checkOf(const QString &row)
{
    static const QHash<QString, Check> checks = {
        { listRow, &tst_Readme::checkList },
        { switchingRow, &tst_Readme::checkSwitching },
        { QStringLiteral("the current theme"), &tst_Readme::checkCurrent },
        { QStringLiteral("colors, fonts, radius"), &tst_Readme::checkValues },
        { QStringLiteral("items of a kind: the first class that the theme has decides"),
          &tst_Readme::checkClass },
        { QStringLiteral("QML files of the theme, plain and for a class"),
          &tst_Readme::checkStyle },
        { QStringLiteral("black or white, whichever is readable on the background"),
          &tst_Readme::checkReadable },
    };
    return checks.value(row);
}

void tst_Readme::rows_data()
{
    QTest::addColumn<QString>("code");
    const QList<QStringList> rows = m_readme.table(QStringLiteral("For"));
    QCOMPARE(rows.size(), 7);
    for (const QStringList &row : rows) {
        const QStringList code = Markdown::codeIn(row.at(1));
        QCOMPARE(QStringList({ QLatin1Char('`') + code.value(0) + QLatin1Char('`') }), row.mid(1));
        QTest::newRow(qPrintable(row.at(0))) << code.first();
    }
}

void tst_Readme::rows()
{
    QFETCH(QString, code);
    const Check check = checkOf(QString::fromUtf8(QTest::currentDataTag()));
    QVERIFY2(check, "nothing looks at what this row does");
    const QObject *object = createInExample(code);
    QVERIFY(object);
    (this->*check)(object, firstTitle);
    switchTo(secondTitle);
    (this->*check)(object, secondTitle);
    switchTo(firstTitle);
    (this->*check)(object, firstTitle);
}

void tst_Readme::checkList(const QObject *object, const QString &)
{
    const auto *list = qobject_cast<const QQuickItem *>(object);
    QTRY_COMPARE(textsBelow(list).size(), 2);
    const QList<QQuickItem *> texts = textsBelow(list);
    QCOMPARE(texts.at(0)->property("text").toString(), firstTitle);
    QCOMPARE(texts.at(1)->property("text").toString(), secondTitle);
}

void tst_Readme::checkSwitching(const QObject *object, const QString &title)
{
    QCOMPARE(manager().current()->title(), title);
    const auto *area = qobject_cast<const QQuickItem *>(object);
    QVERIFY(area->width() > 0 && area->height() > 0);
    QTest::mouseClick(&m_window, Qt::LeftButton, Qt::NoModifier,
                      area->mapToScene(area->boundingRect().center()).toPoint());
    QCOMPARE(manager().current()->title(), secondTitle);
}

void tst_Readme::checkCurrent(const QObject *object, const QString &title)
{
    QCOMPARE(object->property("text").toString(), title);
}

void tst_Readme::checkValues(const QObject *object, const QString &title)
{
    const Theme *theme = manager().themeFromName(title);
    QCOMPARE(colorOf(object), theme->colors()->selection());
    QCOMPARE(object->property("font").value<QFont>(), theme->fonts()->h1Font());
    QCOMPARE(object->property("padding").toInt(), of(title, 6, 9));
}

void tst_Readme::checkClass(const QObject *object, const QString &title)
{
    QCOMPARE(colorOf(object), of(title, QColor(0x0b, 0x5c, 0x8a), QColor(0xff, 0xcc, 0x66)));
}

void tst_Readme::checkStyle(const QObject *object, const QString &title)
{
    const auto *loaded = object->property("item").value<QObject *>();
    QVERIFY(loaded);
    QCOMPARE(loaded->objectName(), of(title, QStringLiteral("first"), QStringLiteral("second")));
}

void tst_Readme::checkReadable(const QObject *object, const QString &title)
{
    QCOMPARE(colorOf(object), of(title, QColor(Qt::black), QColor(Qt::white)));
}

/// Why the table's last rows read a property as well.
void tst_Readme::callAloneIsNotFollowed()
{
    const QObject *object = createInExample(
            QStringLiteral("Loader { source: Theme.getStyle(\"Button\", \"primary\") }"));
    QVERIFY(object);
    checkStyle(object, firstTitle);
    switchTo(secondTitle);
    checkStyle(object, firstTitle);
}

TAVOLINS_TEST_MAIN(tst_Readme)
#include "tst_readme.moc"
