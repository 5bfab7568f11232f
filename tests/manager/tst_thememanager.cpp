#include "manager/thememanager.h"
#include "support/flatmodel.h"
#include "support/testcase.h"
#include "support/themetext.h"
#include "theme/theme.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <QtQml/QQmlEngine>
#include <QtTest/QAbstractItemModelTester>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

namespace {

constexpr int pointerRole = 257;

QStringList titles(const QAbstractItemModel &model)
{
    QStringList result;
    for (int row = 0; row < model.rowCount(); ++row)
        result.append(model.index(row, 0).data().toString());
    return result;
}

Theme *themeAt(const QAbstractItemModel &model, int row)
{
    return qobject_cast<Theme *>(model.index(row, 0).data(pointerRole).value<QObject *>());
}

QStringList complaints;

void collectComplaint(QtMsgType, const QMessageLogContext &, const QString &message)
{
    complaints.append(message);
}

} // namespace

class tst_ThemeManager : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void themeDestroyedByTheAnnouncementOfItsRow();
    void initTestCase();

    // Start
    void instanceIsOne();
    void firstThemeIsTheGlobalOne();
    void anotherManagerLeavesTheGlobalThemeAlone();
    void classHierarchy();
    void properties_data();
    void properties();
    void methods_data();
    void methods();
    void nothingElseInTheMetaObject();

    // Model
    void emptyCatalogue();
    void roleNames();
    void data_data();
    void data();
    void indexesOfNoRow();
    void rowCountIgnoresParent();
    void isReadOnly();
    void pointerIsTheThemeOfThatTitle();
    void titleIsReadEachTime();
    void destroyedThemeLeavesAnEmptyRow();
    void modelTester();
    void modelTesterOnTheBareModel();

    // addTheme and themeFromName
    void addThemeSignals();
    void addThemeKeepsTheParent();
    void addThemeKeepsTheThemeFromGarbageCollection();
    void addThemeTwice();
    void addedThemeAnswersToCurrentChanged();
    void themeFromName_data();
    void themeFromName();
    void themeFromNameFollowsTitles();
    void themeFromNameFollowsAssignment();
    void themeFromNameFollowsDestruction();
    void nullRow();

    // loadThemes
    void loadsInNameOrder();
    void picksOnlyThemeFiles();
    void missingFolder();
    void missingFolderStillSelects();
    void emptyFolder();
    void relativeFolder();
    void filenamesAreAbsolute();
    void folderNamedLikeATheme();
    void failedThemeIsReleased();
    void duplicateTitles();
    void loadingTwiceDoublesTheRows();
    void oneArgumentNeverSwitches();
    void emptyNameNeverSwitches();
    void unknownNameNeverSwitches();
    void selectsThemesOfEarlierCalls();
    void themesBelongToTheManager();
    void laterParentIsRetried();
    void onlyOneRetryPass();
    void retriesInTheOrderOfDeferral();
    void waitingThemeThatFailsLater();
    void ringNeverJoins_data();
    void ringNeverJoins();
    void parentOfAnEarlierFolder();
    void loadingFromAHandlerOfRowsInserted();
    void destroyingAManagerDestroysItsThemes();
};

void tst_ThemeManager::initTestCase()
{
    ThemeManager::getInstance();
}

void tst_ThemeManager::instanceIsOne()
{
    ThemeManager *manager = ThemeManager::getInstance();
    QVERIFY(manager);
    QCOMPARE(ThemeManager::getInstance(), manager);
    QVERIFY(!manager->parent());
    QCOMPARE(QQmlEngine::objectOwnership(manager), QQmlEngine::CppOwnership);
}

void tst_ThemeManager::firstThemeIsTheGlobalOne()
{
    QVERIFY(Theme::g_theme);
    QCOMPARE(ThemeManager::getInstance()->current(), Theme::g_theme);
    QCOMPARE(Theme::global(), Theme::g_theme);
    QCOMPARE(Theme::g_theme->parent(), ThemeManager::getInstance());
    QCOMPARE(ThemeManager::getInstance()->currentIndex(), -1);
    QVERIFY(!ThemeManager::getInstance()->themeFromName(QString()));
}

void tst_ThemeManager::anotherManagerLeavesTheGlobalThemeAlone()
{
    Theme *global = Theme::g_theme;
    {
        const ThemeManager manager;
        QCOMPARE(Theme::g_theme, global);
        QVERIFY(manager.current());
        QVERIFY(manager.current() != global);
        QCOMPARE(manager.current()->parent(), &manager);
        QVERIFY(ThemeManager::getInstance() != &manager);
    }
    QCOMPARE(Theme::global(), global);
}

void tst_ThemeManager::classHierarchy()
{
    const QMetaObject &type = ThemeManager::staticMetaObject;
    QCOMPARE(type.className(), "ThemeManager");
    QCOMPARE(type.superClass(), &QAbstractListModel::staticMetaObject);
}

void tst_ThemeManager::properties_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<QByteArray>("type");

    QTest::newRow("current") << 0 << QByteArray("Theme*");
    QTest::newRow("currentIndex") << 1 << QByteArray("int");
}

void tst_ThemeManager::properties()
{
    QFETCH(const int, position);
    QFETCH(const QByteArray, type);

    const QMetaObject &object = ThemeManager::staticMetaObject;
    const QMetaProperty property = object.property(object.propertyOffset() + position);
    QCOMPARE(property.name(), QTest::currentDataTag());
    QCOMPARE(QByteArray(property.typeName()), type);
    QVERIFY(property.isReadable());
    QVERIFY(property.isWritable());
    QVERIFY(property.isDesignable());
    QVERIFY(property.isScriptable());
    QVERIFY(property.isStored());
    QVERIFY(!property.isConstant());
    QVERIFY(!property.isFinal());
    QVERIFY(!property.isResettable());
    QCOMPARE(property.notifySignal().methodSignature(), QByteArray("currentChanged(Theme*)"));
}

void tst_ThemeManager::methods_data()
{
    QTest::addColumn<int>("position");
    QTest::addColumn<int>("kind");
    QTest::addColumn<int>("access");
    QTest::addColumn<QList<QByteArray>>("parameters");
    QTest::addColumn<bool>("cloned");

    const auto row = [](const char *signature, int position, QMetaMethod::MethodType kind,
                        QMetaMethod::Access access, const QList<QByteArray> &parameters,
                        bool cloned = false) {
        QTest::newRow(signature) << position << int(kind) << int(access) << parameters << cloned;
    };
    row("currentChanged(Theme*)", 0, QMetaMethod::Signal, QMetaMethod::Public, { "current" });
    row("setCurrent(Theme*)", 1, QMetaMethod::Slot, QMetaMethod::Public, { "current" });
    row("setCurrentIndex(int)", 2, QMetaMethod::Slot, QMetaMethod::Public, { "currentIndex" });
    row("loadThemes(QString,QString)", 3, QMetaMethod::Slot, QMetaMethod::Public,
        { "path", "current" });
    row("loadThemes(QString)", 4, QMetaMethod::Slot, QMetaMethod::Public, { "path" }, true);
    row("themeFileChanged(QString)", 5, QMetaMethod::Slot, QMetaMethod::Protected, { "" });
    row("updateGTheme()", 6, QMetaMethod::Slot, QMetaMethod::Protected, {});
}

void tst_ThemeManager::methods()
{
    QFETCH(const int, position);
    QFETCH(const int, kind);
    QFETCH(const int, access);
    QFETCH(const QList<QByteArray>, parameters);
    QFETCH(const bool, cloned);

    const QMetaObject &object = ThemeManager::staticMetaObject;
    const QMetaMethod method = object.method(object.methodOffset() + position);
    QCOMPARE(method.methodSignature(), QByteArray(QTest::currentDataTag()));
    QCOMPARE(int(method.methodType()), kind);
    QCOMPARE(int(method.access()), access);
    QCOMPARE(method.parameterNames(), parameters);
    QCOMPARE(method.returnType(), int(QMetaType::Void));
    QCOMPARE(bool(method.attributes() & QMetaMethod::Cloned), cloned);
}

void tst_ThemeManager::nothingElseInTheMetaObject()
{
    const QMetaObject &object = ThemeManager::staticMetaObject;
    QCOMPARE(object.propertyCount() - object.propertyOffset(), 2);
    QCOMPARE(object.methodCount() - object.methodOffset(), 7);
    QCOMPARE(object.enumeratorCount() - object.enumeratorOffset(), 0);
    QCOMPARE(object.constructorCount(), 0);
    QCOMPARE(object.classInfoCount() - object.classInfoOffset(), 0);
}

void tst_ThemeManager::emptyCatalogue()
{
    const ThemeManager manager;
    QCOMPARE(manager.rowCount(), 0);
    QCOMPARE(manager.currentIndex(), -1);
    QVERIFY(!manager.index(0, 0).isValid());
    for (const int role : { int(Qt::DisplayRole), pointerRole })
        QVERIFY(!manager.data(QModelIndex(), role).isValid());
    QVERIFY(!manager.themeFromName(manager.current()->title()));
}

void tst_ThemeManager::roleNames()
{
    const ThemeManager manager;
    QHash<int, QByteArray> expected = QIdentityProxyModel().roleNames();
    QCOMPARE(expected.value(Qt::DisplayRole), QByteArray("display"));
    expected.insert(pointerRole, "pointer");
    QCOMPARE(manager.roleNames(), expected);
}

void tst_ThemeManager::data_data()
{
    QTest::addColumn<int>("role");
    QTest::addColumn<bool>("valid");

    QTest::newRow("display") << int(Qt::DisplayRole) << true;
    QTest::newRow("pointer") << pointerRole << true;
    QTest::newRow("decoration") << int(Qt::DecorationRole) << false;
    QTest::newRow("edit") << int(Qt::EditRole) << false;
    QTest::newRow("tool tip") << int(Qt::ToolTipRole) << false;
    QTest::newRow("first of the user's roles") << int(Qt::UserRole) << false;
    QTest::newRow("behind pointer") << pointerRole + 1 << false;
    QTest::newRow("negative") << -1 << false;
}

void tst_ThemeManager::data()
{
    QFETCH(const int, role);
    QFETCH(const bool, valid);

    ThemeManager manager;
    auto *theme = new Theme(&manager);
    theme->setTitle(QStringLiteral("Only"));
    manager.addTheme(theme);
    const QVariant value = manager.data(manager.index(0, 0), role);
    QCOMPARE(value.isValid(), valid);
    if (role == Qt::DisplayRole) {
        QCOMPARE(value.userType(), int(QMetaType::QString));
        QCOMPARE(value.toString(), QStringLiteral("Only"));
    } else if (role == pointerRole) {
        QCOMPARE(value.userType(), int(QMetaType::QObjectStar));
        QCOMPARE(value.value<QObject *>(), theme);
    }
}

void tst_ThemeManager::indexesOfNoRow()
{
    // Indexes that no longer, or not yet, point at a row: of a longer model, and of no model.
    ThemeManager longer;
    for (int i = 0; i < 3; ++i)
        longer.addTheme(new Theme(&longer));
    ThemeManager manager;
    manager.addTheme(new Theme(&manager));
    QVERIFY(manager.data(longer.index(0, 0)).isValid());
    QVERIFY(!manager.data(longer.index(1, 0)).isValid());
    QVERIFY(!manager.data(longer.index(2, 0), pointerRole).isValid());
    QVERIFY(!manager.data(QModelIndex()).isValid());
    QVERIFY(!manager.index(1, 0).isValid());
    QVERIFY(!manager.index(0, 1).isValid());
}

void tst_ThemeManager::rowCountIgnoresParent()
{
    ThemeManager manager;
    manager.addTheme(new Theme(&manager));
    manager.addTheme(new Theme(&manager));
    QCOMPARE(manager.rowCount(QModelIndex()), 2);
    QCOMPARE(manager.rowCount(manager.index(0, 0)), 2);
    const QAbstractItemModel &model = manager;
    QVERIFY(!model.hasChildren(manager.index(0, 0)));
    QVERIFY(model.hasChildren(QModelIndex()));
}

void tst_ThemeManager::isReadOnly()
{
    ThemeManager manager;
    auto *theme = new Theme(&manager);
    manager.addTheme(theme);
    const QModelIndex row = manager.index(0, 0);
    QVERIFY(!manager.setData(row, QStringLiteral("x"), Qt::DisplayRole));
    QVERIFY(!manager.insertRow(0));
    QVERIFY(!manager.removeRow(0));
    QVERIFY(!manager.flags(row).testFlag(Qt::ItemIsEditable));
    QCOMPARE(theme->title(), QString());
    QCOMPARE(manager.rowCount(), 1);
}

void tst_ThemeManager::pointerIsTheThemeOfThatTitle()
{
    write(QStringLiteral("one.thm"), themeText(QStringLiteral("One"), 1));
    write(QStringLiteral("two.thm"), themeText(QStringLiteral("Two"), 2));
    ThemeManager manager;
    manager.loadThemes(folder());
    QCOMPARE(manager.rowCount(), 2);
    for (int row = 0; row < 2; ++row) {
        const QString title = manager.index(row, 0).data().toString();
        QVERIFY(themeAt(manager, row));
        QCOMPARE(themeAt(manager, row), manager.themeFromName(title));
        QCOMPARE(themeAt(manager, row)->radius(), row + 1);
    }
}

void tst_ThemeManager::titleIsReadEachTime()
{
    ThemeManager manager;
    auto *theme = new Theme(&manager);
    theme->setTitle(QStringLiteral("Before"));
    manager.addTheme(theme);
    QSignalSpy dataChanged(&manager, &QAbstractItemModel::dataChanged);
    theme->setTitle(QStringLiteral("After"));
    QCOMPARE(titles(manager), QStringList(QStringLiteral("After")));
    QVERIFY(!manager.themeFromName(QStringLiteral("Before")));
    QCOMPARE(manager.themeFromName(QStringLiteral("After")), theme);
    QCOMPARE(dataChanged.count(), 0); // the model only ever tells of new rows
}

void tst_ThemeManager::destroyedThemeLeavesAnEmptyRow()
{
    ThemeManager manager;
    auto *gone = new Theme(&manager);
    auto *stays = new Theme(&manager);
    stays->setTitle(QStringLiteral("Stays"));
    manager.addTheme(gone);
    manager.addTheme(stays);
    QSignalSpy removed(&manager, &QAbstractItemModel::rowsRemoved);
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    delete gone;

    QCOMPARE(manager.rowCount(), 2);
    QVERIFY(!manager.index(0, 0).data().isValid());
    QVERIFY(!manager.index(0, 0).data(pointerRole).isValid());
    QCOMPARE(removed.count(), 0);
    QVERIFY(!manager.themeFromName(QString()));
    QCOMPARE(manager.themeFromName(QStringLiteral("Stays")), stays);
    manager.setCurrentIndex(1);
    QCOMPARE(manager.current(), stays);
    QCOMPARE(current.count(), 1);
    manager.setCurrentIndex(0);
    QCOMPARE(manager.current(), stays);
    QCOMPARE(current.count(), 1);
}

void tst_ThemeManager::modelTester()
{
    write(QStringLiteral("a.thm"), themeText(QStringLiteral("A"), 1));
    write(QStringLiteral("b.thm"), themeText(QStringLiteral("B"), 2));
    ThemeManager manager;
    FlatModel model(&manager);
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::QtTest);
    QCOMPARE(model.rowCount(), 0);
    manager.loadThemes(folder(), QStringLiteral("A"));
    QCOMPARE(model.rowCount(), 2);
    manager.addTheme(new Theme(&manager));
    QCOMPARE(model.rowCount(), 3);
    manager.setCurrentIndex(1);
    manager.loadThemes(folder());
    QCOMPARE(titles(model),
             QStringList({ QStringLiteral("A"), QStringLiteral("B"), QString(), QStringLiteral("A"),
                           QStringLiteral("B") }));
}

void tst_ThemeManager::modelTesterOnTheBareModel()
{
    // The one thing it may object to is what rowCountIgnoresParent() describes.
    ThemeManager manager;
    complaints.clear();
    const QtMessageHandler handler = qInstallMessageHandler(collectComplaint);
    {
        const QAbstractItemModelTester tester(
                &manager, QAbstractItemModelTester::FailureReportingMode::Warning);
        for (int i = 0; i < 3; ++i)
            manager.addTheme(new Theme(&manager));
    }
    qInstallMessageHandler(handler);
    // The tester of Qt 6 finds nothing.
    QCOMPARE(complaints.isEmpty(), QT_VERSION_MAJOR > 5);
    for (const QString &complaint : qAsConst(complaints)) {
        QVERIFY2(complaint.startsWith(QLatin1String("FAIL! childIndex.isValid()")),
                 qPrintable(complaint));
    }
}

void tst_ThemeManager::addThemeSignals()
{
    ThemeManager manager;
    manager.addTheme(new Theme(&manager));
    QStringList order;
    const auto note = [&](const char *signal) {
        return [&, signal](const QModelIndex &parent, int first, int last) {
            order.append(QStringLiteral("%1 %2-%3 of %4, top level: %5")
                                 .arg(QLatin1String(signal))
                                 .arg(first)
                                 .arg(last)
                                 .arg(manager.rowCount())
                                 .arg(!parent.isValid()));
        };
    };
    connect(&manager, &QAbstractItemModel::rowsAboutToBeInserted, this, note("before"));
    connect(&manager, &QAbstractItemModel::rowsInserted, this, note("after"));
    QSignalSpy reset(&manager, &QAbstractItemModel::modelReset);
    QSignalSpy current(&manager, &ThemeManager::currentChanged);

    auto *theme = new Theme(&manager);
    manager.addTheme(theme);
    QCOMPARE(order,
             QStringList({ QStringLiteral("before 1-1 of 1, top level: 1"),
                           QStringLiteral("after 1-1 of 2, top level: 1") }));
    QCOMPARE(reset.count(), 0);
    QCOMPARE(current.count(), 0);
    QCOMPARE(themeAt(manager, 1), theme);
}

void tst_ThemeManager::addThemeKeepsTheParent()
{
    QObject owner;
    auto *theme = new Theme(&owner);
    ThemeManager manager;
    manager.addTheme(theme);
    QCOMPARE(theme->parent(), &owner);
}

void tst_ThemeManager::addThemeKeepsTheThemeFromGarbageCollection()
{
    ThemeManager manager;
    const QPointer<Theme> theme(new Theme);
    manager.addTheme(theme);
    {
        QQmlEngine engine;
        // What a view's delegate does: the object reaches the script as a value of the model.
        engine.globalObject().setProperty(
                QStringLiteral("pointer"),
                engine.toScriptValue(manager.index(0, 0).data(pointerRole)));
        QCOMPARE(engine.evaluate(QStringLiteral("pointer.radius")).toInt(), 0);
        engine.globalObject().deleteProperty(QStringLiteral("pointer"));
        engine.collectGarbage();
        deleteDeferred();
    }
    QVERIFY(theme);
    delete theme;
}

void tst_ThemeManager::addThemeTwice()
{
    ThemeManager manager;
    auto *theme = new Theme(&manager);
    manager.addTheme(theme);
    manager.addTheme(theme);
    QCOMPARE(manager.rowCount(), 2);
    QCOMPARE(themeAt(manager, 0), theme);
    QCOMPARE(themeAt(manager, 1), theme);
    // Each addition has connected it once more.
    QSignalSpy update(theme, &Theme::needUpdate);
    manager.setCurrent(theme);
    QCOMPARE(update.count(), 2);
    QCOMPARE(manager.currentIndex(), 0);
}

void tst_ThemeManager::addedThemeAnswersToCurrentChanged()
{
    ThemeManager manager;
    auto *chosen = new Theme(&manager);
    auto *other = new Theme(&manager);
    manager.addTheme(chosen);
    manager.addTheme(other);
    QSignalSpy chosenUpdate(chosen, &Theme::needUpdate);
    QSignalSpy otherUpdate(other, &Theme::needUpdate);
    Q_EMIT manager.currentChanged(chosen);
    QCOMPARE(chosenUpdate.count(), 1);
    QCOMPARE(otherUpdate.count(), 0);
}

void tst_ThemeManager::themeFromName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("row");

    QTest::newRow("first") << QStringLiteral("Light") << 0;
    QTest::newRow("two of that title: the earlier one") << QStringLiteral("Dark") << 1;
    QTest::newRow("other letter case") << QStringLiteral("light") << -1;
    QTest::newRow("upper case") << QStringLiteral("LIGHT") << -1;
    QTest::newRow("the beginning only") << QStringLiteral("Lig") << -1;
    QTest::newRow("with a space") << QStringLiteral("Light ") << -1;
    QTest::newRow("unknown") << QStringLiteral("Blue") << -1;
    QTest::newRow("empty finds the untitled one") << QString() << 3;
    QTest::newRow("beyond Latin") << QStringLiteral("Тёмная 🌙") << 4;
}

void tst_ThemeManager::themeFromName()
{
    QFETCH(const QString, name);
    QFETCH(const int, row);

    ThemeManager manager;
    const QStringList names = { QStringLiteral("Light"), QStringLiteral("Dark"),
                                QStringLiteral("Dark"), QString(), QStringLiteral("Тёмная 🌙") };
    for (const QString &title : names) {
        auto *theme = new Theme(&manager);
        theme->setTitle(title);
        manager.addTheme(theme);
    }
    QCOMPARE(manager.themeFromName(name), row < 0 ? nullptr : themeAt(manager, row));
}

void tst_ThemeManager::themeFromNameFollowsTitles()
{
    const QString x = QStringLiteral("X");
    const QString y = QStringLiteral("Y");
    ThemeManager manager;
    QList<Theme *> themes;
    for (int i = 0; i < 3; ++i) {
        themes.append(new Theme(&manager));
        manager.addTheme(themes.last());
    }
    QCOMPARE(manager.themeFromName(QString()), themes.at(0));
    themes.at(2)->setTitle(x);
    QCOMPARE(manager.themeFromName(x), themes.at(2));
    themes.at(1)->setTitle(x); // now the earlier one of two
    QCOMPARE(manager.themeFromName(x), themes.at(1));
    themes.at(1)->setTitle(y);
    QCOMPARE(manager.themeFromName(x), themes.at(2));
    QCOMPARE(manager.themeFromName(y), themes.at(1));
    themes.at(0)->setTitle(y);
    QCOMPARE(manager.themeFromName(y), themes.at(0));
    QVERIFY(!manager.themeFromName(QString()));

    // A reading changes the title as well.
    QCOMPARE(themes.at(0)->load(write(QStringLiteral("a.thm"), themeText(x, 1))), 0);
    QCOMPARE(manager.themeFromName(x), themes.at(0));
    QCOMPARE(manager.themeFromName(y), themes.at(1));
}

void tst_ThemeManager::themeFromNameFollowsAssignment()
{
    // Assignment takes the title without a signal.
    ThemeManager manager;
    auto *theme = new Theme(&manager);
    theme->setTitle(QStringLiteral("Before"));
    manager.addTheme(theme);
    QCOMPARE(manager.themeFromName(QStringLiteral("Before")), theme);
    Theme source;
    source.setTitle(QStringLiteral("After"));
    *theme = source;
    QVERIFY(!manager.themeFromName(QStringLiteral("Before")));
    QCOMPARE(manager.themeFromName(QStringLiteral("After")), theme);
}

void tst_ThemeManager::themeFromNameFollowsDestruction()
{
    const QString title = QStringLiteral("Same");
    ThemeManager manager;
    QList<Theme *> themes;
    for (int i = 0; i < 3; ++i) {
        themes.append(new Theme(&manager));
        themes.last()->setTitle(title);
        manager.addTheme(themes.last());
    }
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(manager.themeFromName(title), themes.at(i));
        delete themes.at(i);
    }
    QVERIFY(!manager.themeFromName(title));
    auto *late = new Theme(&manager);
    late->setTitle(title);
    manager.addTheme(late);
    QCOMPARE(manager.themeFromName(title), late);
}

void tst_ThemeManager::nullRow()
{
    ThemeManager manager;
    manager.addTheme(nullptr);
    auto *theme = new Theme(&manager);
    manager.addTheme(theme);
    QCOMPARE(manager.rowCount(), 2);
    QVERIFY(!manager.index(0, 0).data().isValid());
    QVERIFY(!manager.index(0, 0).data(pointerRole).isValid());
    QCOMPARE(manager.themeFromName(QString()), theme);
    manager.setCurrentIndex(1);
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    manager.setCurrentIndex(0);
    QCOMPARE(manager.current(), theme);
    QCOMPARE(current.count(), 0);
}

void tst_ThemeManager::loadsInNameOrder()
{
    // Written in another order than that of the names; letter case does not count.
    for (const char *name : { "delta", "Bravo", "alpha", "Echo", "charlie" })
        write(QLatin1String(name) + QLatin1String(".thm"), themeText(QLatin1String(name), 1));
    ThemeManager manager;
    QSignalSpy inserted(&manager, &QAbstractItemModel::rowsInserted);
    manager.loadThemes(folder());
    QCOMPARE(titles(manager),
             QStringList({ QStringLiteral("alpha"), QStringLiteral("Bravo"),
                           QStringLiteral("charlie"), QStringLiteral("delta"),
                           QStringLiteral("Echo") }));
    QCOMPARE(inserted.count(), 5);
}

void tst_ThemeManager::picksOnlyThemeFiles()
{
    write(QStringLiteral("a.thm"), themeText(QStringLiteral("lower case"), 1));
    write(QStringLiteral("b.THM"), themeText(QStringLiteral("upper case"), 1));
    write(QStringLiteral("c.tar.thm"), themeText(QStringLiteral("two dots"), 1));
    write(QStringLiteral(".hidden.thm"), themeText(QStringLiteral("hidden"), 1));
    write(QStringLiteral("d.thm.bak"), themeText(QStringLiteral("backup"), 1));
    write(QStringLiteral("e.json"), themeText(QStringLiteral("other suffix"), 1));
    write(QStringLiteral("thm"), themeText(QStringLiteral("no suffix"), 1));
    write(QStringLiteral("sub/f.thm"), themeText(QStringLiteral("subfolder"), 1));
    QVERIFY(QFile::link(QStringLiteral("nowhere"), folder() + QLatin1String("/dangling.thm")));
    QVERIFY(QFile::link(QStringLiteral("a.thm"), folder() + QLatin1String("/z.thm")));
    ThemeManager manager;
    manager.loadThemes(folder());
    QCOMPARE(titles(manager),
             QStringList({ QStringLiteral("lower case"), QStringLiteral("upper case"),
                           QStringLiteral("two dots"), QStringLiteral("lower case") }));
}

void tst_ThemeManager::missingFolder()
{
    ThemeManager manager;
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    Theme *before = manager.current();
    manager.loadThemes(folder() + QLatin1String("/nowhere"), QStringLiteral("Any"));
    manager.loadThemes(folder() + QLatin1String("/nowhere"));
    manager.loadThemes(write(QStringLiteral("file.thm"), themeText(QStringLiteral("Any"), 1)),
                       QStringLiteral("Any"));
    QCOMPARE(manager.rowCount(), 0);
    QCOMPARE(manager.current(), before);
    QCOMPARE(current.count(), 0);
}

void tst_ThemeManager::missingFolderStillSelects()
{
    write(QStringLiteral("a.thm"), themeText(QStringLiteral("A"), 1));
    ThemeManager manager;
    manager.loadThemes(folder());
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    manager.loadThemes(folder() + QLatin1String("/nowhere"), QStringLiteral("A"));
    QCOMPARE(manager.rowCount(), 1);
    QCOMPARE(manager.currentIndex(), 0);
    QCOMPARE(current.count(), 1);
}

void tst_ThemeManager::emptyFolder()
{
    ThemeManager manager;
    QSignalSpy inserted(&manager, &QAbstractItemModel::rowsInserted);
    manager.loadThemes(folder(), QStringLiteral("Any"));
    QCOMPARE(manager.rowCount(), 0);
    QCOMPARE(inserted.count(), 0);
}

void tst_ThemeManager::relativeFolder()
{
    write(QStringLiteral("themes/a.thm"), themeText(QStringLiteral("A"), 1));
    QVERIFY(QDir::setCurrent(folder()));
    ThemeManager manager;
    manager.loadThemes(QStringLiteral("themes"));
    QCOMPARE(titles(manager), QStringList(QStringLiteral("A")));
    QVERIFY(QDir::isAbsolutePath(themeAt(manager, 0)->filename()));
}

void tst_ThemeManager::filenamesAreAbsolute()
{
    const QString path = write(QStringLiteral("a.thm"), themeText(QStringLiteral("A"), 1));
    ThemeManager manager;
    manager.loadThemes(folder() + QLatin1Char('/'));
    QCOMPARE(themeAt(manager, 0)->filename(), path);
}

void tst_ThemeManager::folderNamedLikeATheme()
{
    write(QStringLiteral("a.thm"), themeText(QStringLiteral("A"), 1));
    write(QStringLiteral("m.thm/inside.thm"), themeText(QStringLiteral("inside"), 1));
    write(QStringLiteral("z.thm"), themeText(QStringLiteral("Z"), 1));
    expectOpenFailure();
    ThemeManager manager;
    manager.loadThemes(folder());
    QCOMPARE(titles(manager), QStringList({ QStringLiteral("A"), QStringLiteral("Z") }));
}

void tst_ThemeManager::failedThemeIsReleased()
{
    write(QStringLiteral("empty.thm"), QByteArray());
    ThemeManager manager;
    const int before = manager.children().size();
    manager.loadThemes(folder());
    QCOMPARE(manager.rowCount(), 0);
    // Released later: a handler on the way might still use it.
    QCOMPARE(manager.children().size(), before + 1);
    deleteDeferred();
    QCOMPARE(manager.children().size(), before);
}

void tst_ThemeManager::duplicateTitles()
{
    write(QStringLiteral("a.thm"), themeText(QStringLiteral("Same"), 1));
    write(QStringLiteral("b.thm"), themeText(QStringLiteral("Same"), 2));
    ThemeManager manager;
    manager.loadThemes(folder(), QStringLiteral("Same"));
    QCOMPARE(titles(manager), QStringList({ QStringLiteral("Same"), QStringLiteral("Same") }));
    QCOMPARE(manager.themeFromName(QStringLiteral("Same")), themeAt(manager, 0));
    QCOMPARE(manager.current(), themeAt(manager, 0));
    QCOMPARE(manager.currentIndex(), 0);
    QCOMPARE(Theme::global()->radius(), 1);
}

void tst_ThemeManager::loadingTwiceDoublesTheRows()
{
    write(QStringLiteral("a.thm"), themeText(QStringLiteral("A"), 1));
    write(QStringLiteral("b.thm"), themeText(QStringLiteral("B"), 1));
    ThemeManager manager;
    manager.loadThemes(folder());
    Theme *first = themeAt(manager, 0);
    manager.loadThemes(folder());
    QCOMPARE(titles(manager),
             QStringList({ QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("A"),
                           QStringLiteral("B") }));
    QCOMPARE(themeAt(manager, 0), first);
    QVERIFY(themeAt(manager, 2) != first);
    QCOMPARE(manager.themeFromName(QStringLiteral("A")), first);
}

void tst_ThemeManager::oneArgumentNeverSwitches()
{
    write(QStringLiteral("a.thm"), themeText(QStringLiteral("A"), 1));
    write(QStringLiteral("untitled.thm"), themeText(QString(), 1));
    ThemeManager manager;
    Theme *before = manager.current();
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    manager.loadThemes(folder());
    QVERIFY(QMetaObject::invokeMethod(&manager, "loadThemes", Q_ARG(QString, folder())));
    QCOMPARE(manager.rowCount(), 4);
    QCOMPARE(manager.current(), before);
    QCOMPARE(current.count(), 0);
}

void tst_ThemeManager::emptyNameNeverSwitches()
{
    write(QStringLiteral("untitled.thm"), themeText(QString(), 1));
    ThemeManager manager;
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    manager.loadThemes(folder(), QString());
    manager.loadThemes(folder(), QLatin1String(""));
    QCOMPARE(manager.rowCount(), 2);
    QCOMPARE(current.count(), 0);
}

void tst_ThemeManager::unknownNameNeverSwitches()
{
    write(QStringLiteral("a.thm"), themeText(QStringLiteral("A"), 1));
    ThemeManager manager;
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    for (const char *name : { "a", "A ", "B" })
        manager.loadThemes(folder(), QLatin1String(name));
    QCOMPARE(manager.rowCount(), 3);
    QCOMPARE(current.count(), 0);
    QCOMPARE(manager.currentIndex(), -1);
}

void tst_ThemeManager::selectsThemesOfEarlierCalls()
{
    write(QStringLiteral("first/a.thm"), themeText(QStringLiteral("A"), 1));
    write(QStringLiteral("second/a.thm"), themeText(QStringLiteral("A"), 2));
    write(QStringLiteral("second/b.thm"), themeText(QStringLiteral("B"), 3));
    ThemeManager manager;
    manager.loadThemes(folder() + QLatin1String("/first"), QStringLiteral("B"));
    QCOMPARE(manager.currentIndex(), -1);
    manager.loadThemes(folder() + QLatin1String("/second"), QStringLiteral("A"));
    QCOMPARE(manager.currentIndex(), 0);
    QCOMPARE(manager.current()->radius(), 1);
}

void tst_ThemeManager::themesBelongToTheManager()
{
    write(QStringLiteral("a.thm"), themeText(QStringLiteral("A"), 1));
    ThemeManager manager;
    manager.loadThemes(folder());
    QCOMPARE(themeAt(manager, 0)->parent(), &manager);
    QCOMPARE(QQmlEngine::objectOwnership(themeAt(manager, 0)), QQmlEngine::CppOwnership);
}

void tst_ThemeManager::laterParentIsRetried()
{
    ThemeManager &manager = *ThemeManager::getInstance();
    const QString parent = uniqueTitle("Parent");
    const QString child = uniqueTitle("Child");
    const QString last = uniqueTitle("Last");
    write(QStringLiteral("a.thm"),
          "{\"extends\": \"" + parent.toUtf8() + "\", \"title\": \"" + child.toUtf8() + "\"}");
    write(QStringLiteral("b.thm"), themeText(parent, 7));
    write(QStringLiteral("c.thm"), themeText(last, 1));
    const int before = manager.rowCount();
    manager.loadThemes(folder());
    QCOMPARE(titles(manager).mid(before), QStringList({ parent, last, child }));
    QCOMPARE(manager.themeFromName(child)->radius(), 7);
}

void tst_ThemeManager::onlyOneRetryPass()
{
    // a needs b, b needs c, c needs d: at the one retry of each, in this order, only c's parent is
    // there already.
    ThemeManager &manager = *ThemeManager::getInstance();
    const QString a = uniqueTitle("A");
    const QString b = uniqueTitle("B");
    const QString c = uniqueTitle("C");
    const QString d = uniqueTitle("D");
    const auto extending = [](const QString &title, const QString &parent) {
        return themeText(title, 1, "\"extends\": \"" + parent.toUtf8() + '"');
    };
    write(QStringLiteral("a.thm"), extending(a, b));
    write(QStringLiteral("b.thm"), extending(b, c));
    write(QStringLiteral("c.thm"), extending(c, d));
    write(QStringLiteral("d.thm"), themeText(d, 1));
    const int before = manager.rowCount();
    const int children = manager.children().size();
    manager.loadThemes(folder(), a);
    QCOMPARE(titles(manager).mid(before), QStringList({ d, c }));
    QVERIFY(!manager.themeFromName(a));
    deleteDeferred();
    QCOMPARE(manager.children().size(), children + 2);

    // The next call finds b's parent at once, and a's parent at the retry.
    manager.loadThemes(folder());
    QCOMPARE(titles(manager).mid(before), QStringList({ d, c, b, c, d, a }));
}

void tst_ThemeManager::retriesInTheOrderOfDeferral()
{
    // Parent two steps later, but named so that the retries come in the right order.
    ThemeManager &manager = *ThemeManager::getInstance();
    const QString a = uniqueTitle("A");
    const QString b = uniqueTitle("B");
    const QString c = uniqueTitle("C");
    write(QStringLiteral("1.thm"), themeText(a, 1, "\"extends\": \"" + c.toUtf8() + '"'));
    write(QStringLiteral("2.thm"), themeText(b, 1, "\"extends\": \"" + a.toUtf8() + '"'));
    write(QStringLiteral("3.thm"), themeText(c, 1));
    const int before = manager.rowCount();
    manager.loadThemes(folder());
    QCOMPARE(titles(manager).mid(before), QStringList({ c, a, b }));
}

void tst_ThemeManager::waitingThemeThatFailsLater()
{
    ThemeManager &manager = *ThemeManager::getInstance();
    const QString parent = uniqueTitle("Parent");
    const QString path = write(QStringLiteral("a.thm"),
                               "{\"extends\": \"" + parent.toUtf8() + "\"}");
    write(QStringLiteral("b.thm"), themeText(parent, 1));
    const int before = manager.rowCount();
    const int children = manager.children().size();
    const auto removed = connect(&manager, &QAbstractItemModel::rowsInserted, this,
                                 [&] { QVERIFY(QFile::remove(path)); });
    expectOpenFailure();
    manager.loadThemes(folder());
    disconnect(removed);
    QCOMPARE(titles(manager).mid(before), QStringList(parent));
    deleteDeferred();
    QCOMPARE(manager.children().size(), children + 1);
}

void tst_ThemeManager::ringNeverJoins_data()
{
    QTest::addColumn<int>("length");

    QTest::newRow("extends itself") << 1;
    QTest::newRow("two extend each other") << 2;
    QTest::newRow("ring of five") << 5;
}

void tst_ThemeManager::ringNeverJoins()
{
    QFETCH(const int, length);

    ThemeManager &manager = *ThemeManager::getInstance();
    QStringList ring;
    for (int i = 0; i < length; ++i)
        ring.append(uniqueTitle("Ring"));
    for (int i = 0; i < length; ++i) {
        write(QStringLiteral("%1.thm").arg(i),
              themeText(ring.at(i), 1,
                        "\"extends\": \"" + ring.at((i + 1) % length).toUtf8() + '"'));
    }
    // A theme that extends a member of the ring stays away as well; one beside it does not.
    write(QStringLiteral("tail.thm"),
          themeText(uniqueTitle("Tail"), 1, "\"extends\": \"" + ring.first().toUtf8() + '"'));
    const QString beside = uniqueTitle("Beside");
    write(QStringLiteral("x.thm"), themeText(beside, 1));
    const int before = manager.rowCount();
    for (int round = 1; round <= 2; ++round) {
        manager.loadThemes(folder());
        QCOMPARE(manager.rowCount(), before + round);
        QCOMPARE(manager.index(before + round - 1, 0).data().toString(), beside);
    }
}

void tst_ThemeManager::parentOfAnEarlierFolder()
{
    ThemeManager &manager = *ThemeManager::getInstance();
    const QString parent = uniqueTitle("Parent");
    const QString child = uniqueTitle("Child");
    write(QStringLiteral("one/p.thm"), themeText(parent, 9));
    write(QStringLiteral("two/c.thm"),
          "{\"title\": \"" + child.toUtf8() + "\", \"extends\": \"" + parent.toUtf8() + "\"}");
    const int before = manager.rowCount();
    manager.loadThemes(folder() + QLatin1String("/two"));
    QCOMPARE(manager.rowCount(), before);
    manager.loadThemes(folder() + QLatin1String("/one"));
    manager.loadThemes(folder() + QLatin1String("/two"));
    QCOMPARE(titles(manager).mid(before), QStringList({ parent, child }));
    QCOMPARE(manager.themeFromName(child)->radius(), 9);
}

void tst_ThemeManager::loadingFromAHandlerOfRowsInserted()
{
    write(QStringLiteral("outer/a.thm"), themeText(QStringLiteral("A"), 1));
    write(QStringLiteral("outer/b.thm"), themeText(QStringLiteral("B"), 1));
    write(QStringLiteral("inner/x.thm"), themeText(QStringLiteral("X"), 1));
    ThemeManager manager;
    bool nested = false;
    connect(&manager, &QAbstractItemModel::rowsInserted, this, [&] {
        if (!nested) {
            nested = true;
            manager.loadThemes(folder() + QLatin1String("/inner"), QStringLiteral("A"));
        }
    });
    manager.loadThemes(folder() + QLatin1String("/outer"), QStringLiteral("X"));
    QCOMPARE(titles(manager),
             QStringList({ QStringLiteral("A"), QStringLiteral("X"), QStringLiteral("B") }));
    QCOMPARE(manager.current(), themeAt(manager, 1));
}

void tst_ThemeManager::destroyingAManagerDestroysItsThemes()
{
    write(QStringLiteral("a.thm"), themeText(QStringLiteral("A"), 1));
    QPointer<Theme> own;
    QPointer<Theme> loaded;
    QPointer<Theme> added;
    QObject elsewhere;
    {
        ThemeManager manager;
        own = manager.current();
        added = new Theme(&elsewhere);
        manager.addTheme(added);
        manager.loadThemes(folder(), QStringLiteral("A"));
        loaded = manager.current();
        QVERIFY(own && loaded && own != loaded);
    }
    QVERIFY(!own);
    QVERIFY(!loaded);
    QVERIFY(added);
}

void tst_ThemeManager::themeDestroyedByTheAnnouncementOfItsRow()
{
    ThemeManager manager;
    auto *theme = new Theme;
    theme->setTitle(QStringLiteral("Gone"));
    connect(&manager, &ThemeManager::rowsAboutToBeInserted, this, [&] { delete theme; });
    manager.addTheme(theme);
    QCOMPARE(manager.rowCount(), 1);
    QVERIFY(!manager.data(manager.index(0, 0)).isValid());
    QCOMPARE(manager.themeFromName(QStringLiteral("Gone")), nullptr);
    QCOMPARE(manager.currentIndex(), -1);
}

TAVOLINS_TEST_MAIN(tst_ThemeManager)
#include "tst_thememanager.moc"
