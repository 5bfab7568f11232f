#include "manager/managertestcase.h"
#include "manager/thememanager.h"
#include "support/themetext.h"
#include "theme/theme.h"

#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

#include <limits>

/// Which theme is current, and what of it reaches the items.
class tst_CurrentTheme : public ManagerTestCase
{
    Q_OBJECT

private Q_SLOTS:
    // Switching
    void startState();
    void switchSignals();
    void switchOutsideTheCatalogue();
    void globalThemeHoldsTheValuesFirst();
    void globalThemeKeepsItsIdentity();
    void valuesReachAttachedThemes();
    void attachedThemeMadeLaterHoldsTheValues();
    void classScopesOfEarlierThemesStay();
    void selectingTheCurrentOneDoesNothing();
    void selectingNullDoesNothing();
    void afterLoadingAFolder();

    // Index
    void rowZeroIsDeafAtFirst();
    void indexOfNoRow_data();
    void indexOfNoRow();
    void indexOfEachRow();
    void cachedIndexOfAnOutsideTheme();
    void cachedIndexIsThatOfTheSwitch();
    void indexIsTheFirstOfItsRows();

    // updateGTheme
    void updateCopiesTheCurrentTheme();
    void needUpdateOfTheCurrentTheme();
    void needUpdateOfAnOldTheme();
    void filelessThemeKeepsItsLink();
    void filelessThemeHasOneLink();
    void firstThemeHasNoLink();

    // The global theme's own data
    void globalThemeAsCurrent();
    void attachedThemeAsCurrent();

    // Destruction
    void destroyedCurrentTheme();
    void destroyedOldTheme();
    void destroyedManager();

    // Handlers
    void switchInCurrentChanged();
    void switchDuringTheCopy_data();
    void switchDuringTheCopy();
    void switchBackDuringTheCopy();
    void rereadDuringTheCopy();
    void destroyDuringTheCopy();
    void destroyItemsDuringTheCopy();
    void manySwitchesInHandlers();
};

namespace {

/// The signals of the update of \a theme, by name, into \a log.
void noteUpdates(Theme *theme, const char *name, QStringList *log)
{
    const QString prefix = QLatin1String(name) + QLatin1Char('.');
    QObject::connect(theme, &Theme::themeObjectChanged, theme,
                     [=] { log->append(prefix + QLatin1String("themeObject")); });
    QObject::connect(theme, &Theme::radiusChanged, theme,
                     [=] { log->append(prefix + QLatin1String("radius")); });
    QObject::connect(theme, &Theme::needUpdate, theme,
                     [=] { log->append(prefix + QLatin1String("needUpdate")); });
}

QStringList update(const char *name)
{
    const QString prefix = QLatin1String(name) + QLatin1Char('.');
    return { prefix + QLatin1String("themeObject"), prefix + QLatin1String("radius"),
             prefix + QLatin1String("needUpdate") };
}

void updateFromData(ThemeManager *manager)
{
    QVERIFY(QMetaObject::invokeMethod(manager, "updateGTheme"));
}

} // namespace

void tst_CurrentTheme::startState()
{
    ThemeManager manager;
    QVERIFY(manager.current());
    QCOMPARE(manager.currentIndex(), -1);
    QCOMPARE(manager.rowCount(), 0);
    QVERIFY(manager.current()->filename().isEmpty());
    addTheme(&manager, "A", 1);
    QCOMPARE(manager.currentIndex(), -1);
}

void tst_CurrentTheme::switchSignals()
{
    ThemeManager manager;
    QStringList log;
    connect(&manager, &ThemeManager::currentChanged, this, [&](Theme *current) {
        log.append(QLatin1String("currentChanged ") + current->title());
    });
    Theme *a = addFile(&manager, "A", 3, "#123456");
    Theme *b = addFile(&manager, "B", 4, "#654321");
    QObject item;
    Theme *first = Theme::qmlAttachedProperties(&item);
    QObject otherItem;
    Theme *second = Theme::qmlAttachedProperties(&otherItem);
    QObject watched; // the global theme outlives this function, its connections must not
    noteUpdates(first, "first", &log);
    noteUpdates(second, "second", &log);
    noteUpdates(a, "A", &log);
    noteUpdates(b, "B", &log);
    connect(Theme::global(), &Theme::needUpdate, &watched,
            [&] { log.append(QStringLiteral("global.needUpdate")); });

    // One copy: the data reaches all that share it, then the global theme updates once more.
    const QStringList copy = QStringList(QStringLiteral("global.needUpdate")) + update("first")
            + update("second") + QStringList(QStringLiteral("global.needUpdate"));
    // The signal makes the new theme update itself, which asks for the second copy.
    manager.setCurrent(a);
    QCOMPARE(log, copy + QStringList(QStringLiteral("currentChanged A")) + update("A") + copy);
    QCOMPARE(log.count(QStringLiteral("first.needUpdate")), 2);
    QCOMPARE(log.count(QStringLiteral("second.needUpdate")), 2);

    log.clear();
    manager.setCurrent(b);
    QCOMPARE(log, copy + QStringList(QStringLiteral("currentChanged B")) + update("B") + copy);
}

void tst_CurrentTheme::switchOutsideTheCatalogue()
{
    ThemeManager manager;
    addTheme(&manager, "A", 1);
    Theme theme;
    theme.setRadius(21);
    QObject item;
    Theme *attached = Theme::qmlAttachedProperties(&item);
    QSignalSpy update(attached, &Theme::needUpdate);
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    manager.setCurrent(&theme);
    // Nothing connects the signal to it, so there is one copy only.
    QCOMPARE(update.count(), 1);
    QCOMPARE(current.count(), 1);
    QCOMPARE(current.first().first().value<Theme *>(), &theme);
    QCOMPARE(manager.current(), &theme);
    QCOMPARE(manager.currentIndex(), -1);
    QCOMPARE(attached->radius(), 21);
    theme.sendUpdate();
    QCOMPARE(update.count(), 2);
}

void tst_CurrentTheme::globalThemeHoldsTheValuesFirst()
{
    ThemeManager manager;
    int radius = -1;
    QString title;
    connect(&manager, &ThemeManager::currentChanged, this, [&](Theme *current) {
        QCOMPARE(manager.current(), current);
        QCOMPARE(manager.currentIndex(), 0);
        radius = Theme::global()->radius();
        title = Theme::global()->title();
    });
    Theme *a = addFile(&manager, "A", 13);
    manager.setCurrent(a);
    QCOMPARE(radius, 13);
    QCOMPARE(title, QStringLiteral("A"));
}

void tst_CurrentTheme::globalThemeKeepsItsIdentity()
{
    ThemeManager manager;
    Theme *global = Theme::global();
    QObject *data = global->colors()->parent();
    QSignalSpy title(global, &Theme::titleChanged);
    QSignalSpy filename(global, &Theme::filenameChanged);
    Theme *a = addFile(&manager, "A", 1);
    manager.setCurrent(a);
    QCOMPARE(Theme::g_theme, global);
    QCOMPARE(global->colors()->parent(), data);
    QVERIFY(a->colors()->parent() != data);
    QCOMPARE(global->title(), QStringLiteral("A"));
    QCOMPARE(global->filename(), QString());
    QCOMPARE(title.count(), 0);
    QCOMPARE(filename.count(), 0);
}

void tst_CurrentTheme::valuesReachAttachedThemes()
{
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 5, "#101112");
    Theme *b = addFile(&manager, "B", 6, "#202122");
    QObject item;
    Theme *attached = Theme::qmlAttachedProperties(&item);
    QSignalSpy foreground(attached->colors(), &ThemeObjectColors::foregroundChanged);
    manager.setCurrent(a);
    QCOMPARE(attached->colors()->foreground(), QColor(0x10, 0x11, 0x12));
    QCOMPARE(attached->radius(), 5);
    QCOMPARE(foreground.count(), 1);
    manager.setCurrent(b);
    QCOMPARE(attached->colors()->foreground(), QColor(0x20, 0x21, 0x22));
    QCOMPARE(attached->radius(), 6);
    QCOMPARE(foreground.count(), 2); // the second copy finds nothing to change
}

void tst_CurrentTheme::attachedThemeMadeLaterHoldsTheValues()
{
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 8, "#414243");
    manager.setCurrent(a);
    QObject item;
    Theme *attached = Theme::qmlAttachedProperties(&item);
    QCOMPARE(attached->colors()->foreground(), QColor(0x41, 0x42, 0x43));
    QCOMPARE(attached->radius(), 8);
    QCOMPARE(attached->title(), QStringLiteral("A"));
}

void tst_CurrentTheme::classScopesOfEarlierThemesStay()
{
    // Copying merges the scopes: a class that only the earlier theme has keeps its look.
    ThemeManager manager;
    const QString title = uniqueTitle("scope");
    Theme *a = new Theme(&manager);
    QCOMPARE(a->load(write(QStringLiteral("a.thm"),
                           themeText(QStringLiteral("A"), 1,
                                     '"' + title.toUtf8()
                                             + "\": {\"colors\": {\"foreground\": \"#aa0000\"}}"))),
             0);
    manager.addTheme(a);
    Theme *b = addFile(&manager, "B", 2, "#00bb00");
    QObject item;
    Theme *attached = Theme::qmlAttachedProperties(&item);
    attached->setClassnames(title);
    manager.setCurrent(a);
    QCOMPARE(attached->colors()->foreground(), QColor(0xaa, 0, 0));
    manager.setCurrent(b);
    QCOMPARE(attached->colors()->foreground(), QColor(0xaa, 0, 0));
    attached->setClassnames(QString());
    QCOMPARE(attached->colors()->foreground(), QColor(0, 0xbb, 0));
}

void tst_CurrentTheme::selectingTheCurrentOneDoesNothing()
{
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 1);
    manager.setCurrent(a);
    QObject item;
    QSignalSpy update(Theme::qmlAttachedProperties(&item), &Theme::needUpdate);
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    manager.setCurrent(a);
    manager.setCurrentIndex(0);
    manager.loadThemes(folder() + QLatin1String("/nowhere"), QStringLiteral("A"));
    QVERIFY(manager.setProperty("current", QVariant::fromValue(a)));
    QCOMPARE(update.count(), 0);
    QCOMPARE(current.count(), 0);
}

void tst_CurrentTheme::selectingNullDoesNothing()
{
    ThemeManager manager;
    Theme *own = manager.current();
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    manager.setCurrent(nullptr);
    QCOMPARE(manager.current(), own);
    Theme *a = addFile(&manager, "A", 1);
    manager.setCurrent(a);
    manager.setCurrent(nullptr);
    QCOMPARE(manager.current(), a);
    QCOMPARE(current.count(), 1);
    // Its file is still watched.
    rewrite("A", radiusText("A", 2));
    QTRY_COMPARE(a->radius(), 2);
}

void tst_CurrentTheme::afterLoadingAFolder()
{
    write(QStringLiteral("a.thm"), coloredThemeText(QStringLiteral("A"), 1, "#000001"));
    write(QStringLiteral("b.thm"), coloredThemeText(QStringLiteral("B"), 2, "#000002"));
    write(QStringLiteral("c.thm"), coloredThemeText(QStringLiteral("C"), 3, "#000003"));
    ThemeManager manager;
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    manager.loadThemes(folder(), QStringLiteral("B"));
    QCOMPARE(manager.current()->title(), QStringLiteral("B"));
    QCOMPARE(manager.current(), manager.themeFromName(QStringLiteral("B")));
    QCOMPARE(manager.currentIndex(), 1);
    QCOMPARE(current.count(), 1);
    QCOMPARE(Theme::global()->radius(), 2);
    QCOMPARE(Theme::global()->colors()->foreground(), QColor(0, 0, 2));
    QCOMPARE(Theme::global()->title(), QStringLiteral("B"));

    // Only its file is watched: the changes of all three are seen in one go.
    QSignalSpy a(manager.themeFromName(QStringLiteral("A")), &Theme::needUpdate);
    QSignalSpy c(manager.themeFromName(QStringLiteral("C")), &Theme::needUpdate);
    write(QStringLiteral("a.thm"), themeText(QStringLiteral("A"), 11));
    write(QStringLiteral("c.thm"), themeText(QStringLiteral("C"), 13));
    write(QStringLiteral("b.thm"), themeText(QStringLiteral("B"), 12));
    QTRY_COMPARE(Theme::global()->radius(), 12);
    QCOMPARE(a.count(), 0);
    QCOMPARE(c.count(), 0);
    QCOMPARE(current.count(), 1);
}

void tst_CurrentTheme::rowZeroIsDeafAtFirst()
{
    ThemeManager manager;
    Theme *a = addTheme(&manager, "A", 1);
    Theme *b = addTheme(&manager, "B", 2);
    Theme *own = manager.current();
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    manager.setCurrentIndex(0);
    QVERIFY(manager.setProperty("currentIndex", 0));
    QCOMPARE(manager.current(), own);
    QCOMPARE(current.count(), 0);
    manager.setCurrentIndex(1);
    QCOMPARE(manager.current(), b);
    manager.setCurrentIndex(0);
    QCOMPARE(manager.current(), a);
    QCOMPARE(current.count(), 2);
}

void tst_CurrentTheme::indexOfNoRow_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<bool>("switched");

    for (const bool switched : { false, true }) {
        const QByteArray when = switched ? "after a switch" : "before any switch";
        QTest::newRow(QByteArray("-1 ") + when) << -1 << switched;
        QTest::newRow(QByteArray("count ") + when) << 2 << switched;
        QTest::newRow(QByteArray("smallest ") + when)
                << std::numeric_limits<int>::min() << switched;
        QTest::newRow(QByteArray("greatest ") + when)
                << std::numeric_limits<int>::max() << switched;
    }
}

void tst_CurrentTheme::indexOfNoRow()
{
    QFETCH(const int, index);
    QFETCH(const bool, switched);

    ThemeManager manager;
    addTheme(&manager, "A", 1);
    Theme *b = addTheme(&manager, "B", 2);
    if (switched)
        manager.setCurrent(b);
    Theme *before = manager.current();
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    manager.setCurrentIndex(index);
    QCOMPARE(manager.current(), before);
    QCOMPARE(manager.currentIndex(), switched ? 1 : -1);
    QCOMPARE(current.count(), 0);
}

void tst_CurrentTheme::indexOfEachRow()
{
    ThemeManager manager;
    for (int i = 0; i < 5; ++i)
        addTheme(&manager, "T", 10 + i);
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    for (const int row : { 4, 0, 3, 1, 2 }) {
        manager.setCurrentIndex(row);
        QCOMPARE(manager.currentIndex(), row);
        QCOMPARE(Theme::global()->radius(), 10 + row);
    }
    QCOMPARE(current.count(), 5);
}

void tst_CurrentTheme::cachedIndexOfAnOutsideTheme()
{
    ThemeManager manager;
    Theme *a = addTheme(&manager, "A", 1);
    auto *outside = new Theme(&manager);
    manager.setCurrent(outside);
    QCOMPARE(manager.currentIndex(), -1);
    manager.setCurrentIndex(-1);
    QCOMPARE(manager.current(), outside);
    manager.setCurrentIndex(0);
    QCOMPARE(manager.current(), a);
}

void tst_CurrentTheme::cachedIndexIsThatOfTheSwitch()
{
    // The theme was in no row when it became current, so its row is not known as the current one;
    // choosing it finds that it is current already.
    ThemeManager manager;
    addTheme(&manager, "A", 1);
    auto *theme = new Theme(&manager);
    manager.setCurrent(theme);
    manager.addTheme(theme);
    QCOMPARE(manager.currentIndex(), 1);
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    manager.setCurrentIndex(1);
    QCOMPARE(current.count(), 0);
    manager.setCurrentIndex(0);
    QCOMPARE(current.count(), 1);
}

void tst_CurrentTheme::indexIsTheFirstOfItsRows()
{
    ThemeManager manager;
    addTheme(&manager, "A", 1);
    Theme *twice = addTheme(&manager, "B", 2);
    manager.addTheme(twice);
    manager.setCurrentIndex(2);
    QCOMPARE(manager.current(), twice);
    QCOMPARE(manager.currentIndex(), 1);
}

void tst_CurrentTheme::updateCopiesTheCurrentTheme()
{
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 7);
    manager.setCurrent(a);
    QObject item;
    Theme *attached = Theme::qmlAttachedProperties(&item);
    attached->setRadius(70);
    QCOMPARE(Theme::global()->radius(), 70);
    QSignalSpy update(attached, &Theme::needUpdate);
    QSignalSpy globalUpdate(Theme::global(), &Theme::needUpdate);
    QSignalSpy ownUpdate(a, &Theme::needUpdate);
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    updateFromData(&manager);
    QCOMPARE(attached->radius(), 7);
    QCOMPARE(update.count(), 1);
    QCOMPARE(globalUpdate.count(), 2); // with all that share its data, and on its own
    QCOMPARE(ownUpdate.count(), 0);
    QCOMPARE(current.count(), 0);
}

void tst_CurrentTheme::needUpdateOfTheCurrentTheme()
{
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 7);
    manager.setCurrent(a);
    QObject item;
    Theme *attached = Theme::qmlAttachedProperties(&item);
    QSignalSpy update(attached, &Theme::needUpdate);
    a->setRadius(8); // only radiusChanged(), which nobody is linked to
    QCOMPARE(attached->radius(), 7);
    QCOMPARE(update.count(), 0);
    a->sendUpdate();
    QCOMPARE(attached->radius(), 8);
    QCOMPARE(update.count(), 1);
}

void tst_CurrentTheme::needUpdateOfAnOldTheme()
{
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 7);
    Theme *b = addFile(&manager, "B", 8);
    manager.setCurrent(a);
    manager.setCurrent(b);
    QObject item;
    Theme *attached = Theme::qmlAttachedProperties(&item);
    QSignalSpy update(attached, &Theme::needUpdate);
    a->sendUpdate();
    QCOMPARE(update.count(), 0);
    b->sendUpdate();
    QCOMPARE(update.count(), 1);
}

void tst_CurrentTheme::filelessThemeKeepsItsLink()
{
    ThemeManager manager;
    Theme *old = addTheme(&manager, "Old", 7);
    Theme *a = addFile(&manager, "A", 8);
    manager.setCurrent(old);
    manager.setCurrent(a);
    QObject item;
    Theme *attached = Theme::qmlAttachedProperties(&item);
    attached->setRadius(80);
    QSignalSpy update(attached, &Theme::needUpdate);
    old->sendUpdate();
    // The new theme was copied once more, not the old one.
    QCOMPARE(attached->radius(), 8);
    QCOMPARE(Theme::global()->title(), QStringLiteral("A"));
    QCOMPARE(update.count(), 1);
}

void tst_CurrentTheme::filelessThemeHasOneLink()
{
    ThemeManager manager;
    Theme *old = addTheme(&manager, "Old", 7);
    Theme *a = addFile(&manager, "A", 8);
    for (int i = 0; i < 3; ++i) {
        manager.setCurrent(old);
        manager.setCurrent(a);
    }
    QObject item;
    QSignalSpy update(Theme::qmlAttachedProperties(&item), &Theme::needUpdate);
    old->sendUpdate();
    QCOMPARE(update.count(), 1); // however often it was current
    update.clear();
    a->sendUpdate(); // has a file, so its links were dropped each time
    QCOMPARE(update.count(), 1);
}

void tst_CurrentTheme::firstThemeHasNoLink()
{
    ThemeManager manager;
    Theme *own = manager.current();
    QObject item;
    QSignalSpy update(Theme::qmlAttachedProperties(&item), &Theme::needUpdate);
    own->sendUpdate();
    Theme *a = addFile(&manager, "A", 8);
    manager.setCurrent(a);
    update.clear();
    own->sendUpdate();
    QCOMPARE(update.count(), 0);
}

void tst_CurrentTheme::globalThemeAsCurrent()
{
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 5);
    manager.setCurrent(a);
    QObject item;
    Theme *attached = Theme::qmlAttachedProperties(&item);
    QSignalSpy update(attached, &Theme::needUpdate);
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    manager.setCurrent(Theme::global());
    QCOMPARE(update.count(), 1);
    QCOMPARE(current.count(), 1);
    QCOMPARE(manager.current(), Theme::global());
    QCOMPARE(attached->radius(), 5);

    update.clear();
    Theme::global()->sendUpdate();
    QCOMPARE(update.count(), 1);
    update.clear();
    updateFromData(&manager);
    QCOMPARE(update.count(), 1);

    // An ordinary switch counts as ever, although the global theme has kept its link.
    update.clear();
    manager.setCurrent(a);
    QCOMPARE(update.count(), 2);
    QCOMPARE(current.count(), 2);
    QCOMPARE(attached->radius(), 5);
}

void tst_CurrentTheme::attachedThemeAsCurrent()
{
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 5);
    manager.setCurrent(a);
    QObject item;
    Theme *attached = Theme::qmlAttachedProperties(&item);
    QObject otherItem;
    Theme *other = Theme::qmlAttachedProperties(&otherItem);
    QSignalSpy update(other, &Theme::needUpdate);
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    manager.setCurrent(attached);
    QCOMPARE(manager.current(), attached);
    QCOMPARE(manager.currentIndex(), -1);
    QCOMPARE(update.count(), 1);
    QCOMPARE(current.count(), 1);

    update.clear();
    attached->sendUpdate();
    QCOMPARE(update.count(), 1);
    attached->setRadius(6);
    attached->setClassnames(QStringLiteral("x"));
    QCOMPARE(other->radius(), 6);

    update.clear();
    manager.setCurrent(a);
    QCOMPARE(update.count(), 2);
    QCOMPARE(other->radius(), 5);
}

void tst_CurrentTheme::destroyedCurrentTheme()
{
    ThemeManager manager;
    Theme *own = manager.current();
    Theme *a = addFile(&manager, "A", 5);
    Theme *b = addFile(&manager, "B", 6);
    manager.setCurrent(b);
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    delete b;
    QCOMPARE(manager.current(), own);
    QCOMPARE(manager.currentIndex(), -1);
    QCOMPARE(current.count(), 1);
    QCOMPARE(current.first().first().value<Theme *>(), own);
    QCOMPARE(Theme::global()->radius(), 6); // the look stays until the next switch
    updateFromData(&manager);
    // Nothing of the destroyed theme is watched.
    rewrite("B", radiusText("B", 7));
    QObject item;
    QSignalSpy update(Theme::qmlAttachedProperties(&item), &Theme::needUpdate);
    QVERIFY(!update.wait(200));
    manager.setCurrentIndex(0);
    QCOMPARE(manager.current(), a);
    QCOMPARE(update.count(), 2);
}

void tst_CurrentTheme::destroyedOldTheme()
{
    ThemeManager manager;
    Theme *old = addTheme(&manager, "Old", 4);
    Theme *a = addFile(&manager, "A", 5);
    manager.setCurrent(old);
    manager.setCurrent(a);
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    delete old;
    QCOMPARE(manager.current(), a);
    QCOMPARE(current.count(), 0);
    rewrite("A", radiusText("A", 6));
    QTRY_COMPARE(Theme::global()->radius(), 6);
}

void tst_CurrentTheme::destroyedManager()
{
    QObject owner;
    auto *theme = new Theme(&owner);
    theme->setRadius(12);
    {
        ThemeManager manager;
        manager.addTheme(theme);
        manager.setCurrent(theme);
        QCOMPARE(Theme::global()->radius(), 12);
    }
    theme->setRadius(13);
    theme->sendUpdate();
    QCOMPARE(Theme::global()->radius(), 12);
}

void tst_CurrentTheme::switchInCurrentChanged()
{
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 1, "#0000aa");
    Theme *b = addFile(&manager, "B", 2, "#0000bb");
    QStringList seen;
    connect(&manager, &ThemeManager::currentChanged, this, [&](Theme *current) {
        seen.append(current->title());
        if (current == a)
            manager.setCurrent(b);
    });
    manager.setCurrent(a);
    QCOMPARE(seen, QStringList({ QStringLiteral("A"), QStringLiteral("B") }));
    QCOMPARE(manager.current(), b);
    QCOMPARE(manager.currentIndex(), 1);
    QCOMPARE(Theme::global()->radius(), 2);
    QCOMPARE(Theme::global()->colors()->foreground(), QColor(0, 0, 0xbb));

    QObject item;
    QSignalSpy update(Theme::qmlAttachedProperties(&item), &Theme::needUpdate);
    a->sendUpdate();
    QCOMPARE(update.count(), 0);
    rewrite("A", radiusText("A", 11));
    rewrite("B", radiusText("B", 12));
    QTRY_COMPARE(Theme::global()->radius(), 12);
    QCOMPARE(a->radius(), 1);
    // Row 1 is known as the current one.
    manager.setCurrentIndex(0);
    QCOMPARE(seen.size(), 4);
}

void tst_CurrentTheme::switchDuringTheCopy_data()
{
    QTest::addColumn<int>("step");

    QTest::newRow("a color has changed") << 0;
    QTest::newRow("a font has changed") << 1;
    QTest::newRow("an item updates its groups") << 2;
    QTest::newRow("an item updates its radius") << 3;
    QTest::newRow("an item has updated") << 4;
    QTest::newRow("the global theme has updated") << 5;
}

void tst_CurrentTheme::switchDuringTheCopy()
{
    QFETCH(const int, step);

    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 1, "#0000aa");
    Theme *b = addFile(&manager, "B", 2, "#0000bb");
    QFont font;
    font.setPointSizeF(33);
    a->fonts()->setH1Font(font);
    manager.setCurrent(addFile(&manager, "Start", 0, "#000011"));
    QObject item;
    Theme *attached = Theme::qmlAttachedProperties(&item);
    bool armed = true;
    const auto switchOnce = [&] {
        if (!armed)
            return;
        armed = false;
        manager.setCurrent(b);
    };
    switch (step) {
    case 0:
        connect(attached->colors(), &ThemeObjectColors::foregroundChanged, &item, switchOnce);
        break;
    case 1:
        connect(attached->fonts(), &ThemeObjectFonts::h1FontChanged, &item, switchOnce);
        break;
    case 2:
        connect(attached, &Theme::themeObjectChanged, &item, switchOnce);
        break;
    case 3:
        connect(attached, &Theme::radiusChanged, &item, switchOnce);
        break;
    case 4:
        connect(attached, &Theme::needUpdate, &item, switchOnce);
        break;
    case 5:
        connect(Theme::global(), &Theme::needUpdate, &item, switchOnce);
        break;
    }
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    manager.setCurrent(a);
    QVERIFY(!armed);

    // The later switch stands whole, and is the only one that is told.
    QCOMPARE(current.count(), 1);
    QCOMPARE(current.first().first().value<Theme *>(), b);
    QCOMPARE(manager.current(), b);
    QCOMPARE(manager.currentIndex(), 1);
    for (const Theme *theme : { Theme::global(), attached }) {
        QCOMPARE(theme->radius(), 2);
        QCOMPARE(theme->colors()->foreground(), QColor(0, 0, 0xbb));
        QCOMPARE(theme->fonts()->h1Font(), b->fonts()->h1Font());
    }
    QCOMPARE(Theme::global()->title(), QStringLiteral("B"));
    QSignalSpy update(attached, &Theme::needUpdate);
    a->sendUpdate();
    QCOMPARE(update.count(), 0);
    rewrite("A", radiusText("A", 11));
    rewrite("B", radiusText("B", 12));
    QTRY_COMPARE(attached->radius(), 12);
    QCOMPARE(a->radius(), 1);
}

void tst_CurrentTheme::switchBackDuringTheCopy()
{
    // A handler that insists on its theme wins, and each of the two is told of at most once.
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 1);
    Theme *b = addFile(&manager, "B", 2);
    manager.setCurrent(a);
    QObject item;
    Theme *attached = Theme::qmlAttachedProperties(&item);
    connect(attached, &Theme::needUpdate, &item, [&] { manager.setCurrent(a); });
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    manager.setCurrent(b);
    QCOMPARE(manager.current(), a);
    QCOMPARE(current.count(), 1);
    QCOMPARE(current.first().first().value<Theme *>(), a);
    QCOMPARE(attached->radius(), 1);
    rewrite("B", radiusText("B", 12));
    rewrite("A", radiusText("A", 11));
    QTRY_COMPARE(attached->radius(), 11);
    QCOMPARE(b->radius(), 2);
}

void tst_CurrentTheme::rereadDuringTheCopy()
{
    // The theme's file is read again while its old values are on their way.
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 1, "#0000aa");
    manager.setCurrent(a);
    QObject item;
    Theme *attached = Theme::qmlAttachedProperties(&item);
    bool armed = true;
    connect(attached, &Theme::themeObjectChanged, &item, [&] {
        if (!armed)
            return;
        armed = false;
        rewrite("A", coloredThemeText(QStringLiteral("A"), 9, "#0000ff"));
        QCOMPARE(a->reload(), 0);
    });
    a->sendUpdate();
    QVERIFY(!armed);
    QCOMPARE(attached->radius(), 9);
    QCOMPARE(attached->colors()->foreground(), QColor(0, 0, 0xff));
}

void tst_CurrentTheme::destroyDuringTheCopy()
{
    ThemeManager manager;
    Theme *own = manager.current();
    QPointer<Theme> a(addFile(&manager, "A", 1));
    Theme *b = addFile(&manager, "B", 2);
    QObject item;
    Theme *attached = Theme::qmlAttachedProperties(&item);
    connect(attached, &Theme::needUpdate, &item, [&] { delete a; });
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    manager.setCurrent(a);
    QVERIFY(!a);
    QCOMPARE(manager.current(), own);
    QCOMPARE(current.count(), 1);
    QCOMPARE(current.first().first().value<Theme *>(), own);
    QCOMPARE(attached->radius(), 1);
    manager.setCurrent(b);
    QCOMPARE(attached->radius(), 2);
}

void tst_CurrentTheme::destroyItemsDuringTheCopy()
{
    ThemeManager manager;
    Theme *a = addFile(&manager, "A", 1);
    Theme *b = addFile(&manager, "B", 2);
    manager.setCurrent(a);
    QList<QPointer<QObject>> items;
    QList<QPointer<Theme>> themes;
    for (int i = 0; i < 9; ++i) {
        items.append(new QObject);
        themes.append(Theme::qmlAttachedProperties(items.last()));
    }
    // The middle one takes itself, its neighbours, and the first and the last one along.
    connect(themes.at(4), &Theme::needUpdate, items.at(4), [&] {
        for (const int i : { 0, 3, 5, 8, 4 })
            delete items.at(i);
    });
    manager.setCurrent(b);
    deleteDeferred();
    for (int i = 0; i < 9; ++i) {
        const bool gone = i == 0 || (i >= 3 && i <= 5) || i == 8;
        QCOMPARE(items.at(i).isNull(), gone);
        QCOMPARE(themes.at(i).isNull(), gone);
        if (!gone)
            QCOMPARE(themes.at(i)->radius(), 2);
    }
    manager.setCurrent(a);
    QCOMPARE(themes.at(1)->radius(), 1);
    for (const QPointer<QObject> &item : qAsConst(items))
        delete item;
}

void tst_CurrentTheme::manySwitchesInHandlers()
{
    // Every update of an item switches on to the next theme, until the last one.
    ThemeManager manager;
    QList<Theme *> themes;
    for (int i = 0; i < 50; ++i)
        themes.append(addTheme(&manager, "T", i));
    QObject item;
    Theme *attached = Theme::qmlAttachedProperties(&item);
    connect(attached, &Theme::needUpdate, &item, [&] {
        const int next = manager.currentIndex() + 1;
        if (next < themes.size())
            manager.setCurrent(themes.at(next));
    });
    QSignalSpy current(&manager, &ThemeManager::currentChanged);
    manager.setCurrent(themes.first());
    QCOMPARE(manager.current(), themes.last());
    QCOMPARE(attached->radius(), 49);
    QCOMPARE(current.count(), 1);
    QCOMPARE(manager.currentIndex(), 49);
}

TAVOLINS_TEST_MAIN(tst_CurrentTheme)
#include "tst_currenttheme.moc"
