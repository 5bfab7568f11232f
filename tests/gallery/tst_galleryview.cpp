// The gallery's window: what it shows of each theme, and how it switches.

#include "gallery/galleryview.h"
#include "gallery/surroundings.h"
#include "manager/thememanager.h"
#include "support/renderer.h"
#include "support/testcase.h"
#include "theme/theme.h"

#include <QtQuick/QQuickItem>
#include <QtTest/QtTest>

#include <memory>

class tst_GalleryView : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void themesLookDifferent();
    void pixelsHaveTheThemesColors_data();
    void pixelsHaveTheThemesColors();
    void everythingIsShown_data();
    void everythingIsShown();
    void nothingIsCutOff_data();
    void nothingIsCutOff();
    void picturesPromiseNoEdits();
    void listShowsTheCatalogue();
    void clickSwitches();
    void keysSwitch();
    void keysSwitchFromWithinAField();
    void inheritedClassesAreTold();
#if GALLERY_HAS_CONTROLS
    void pagesAreTurned();
    void pageShowsAllControls_data();
    void pageShowsAllControls();
    void statesAreSeen_data();
    void statesAreSeen();
#endif

private:
    static ThemeManager *manager();
    static void addThemeRows();
    void open();
    QList<QQuickItem *> items(const char *type) const;
    QQuickItem *item(const char *type, const char *name) const;
    QPoint center(const QQuickItem *item) const;

    std::unique_ptr<Renderer> m_renderer;
    std::unique_ptr<GalleryView> m_view;
    bool m_hasControls = false;
};

namespace {

const char *const colorNames[] = {
    "foreground",        "lighterForeground", "darkerForeground", "background",
    "lighterBackground", "darkerBackground",  "selection",
};
const char *const fontNames[] = {
    "mainFont", "alternateFont", "h1Font", "h2Font", "h3Font", "h4Font",
};
const char *const classNames[] = { "header", "primary", "danger", "muted", "code" };

/// The visible items below \a root whose type is defined in the file \a type.qml, or is that class
/// of Qt's: the engine may derive a class of another name from it.
void collect(QQuickItem *root, const QByteArray &type, QList<QQuickItem *> &found)
{
    if (!root->isVisible())
        return;
    if (QByteArray(root->metaObject()->className()).startsWith(type) || root->inherits(type))
        found.append(root);
    const QList<QQuickItem *> children = root->childItems();
    for (QQuickItem *child : children)
        collect(child, type, found);
}

/// \a root and all that is below it, be it an item or not: popups are none.
[[maybe_unused]] void collectObjects(QObject *root, QSet<QObject *> &found)
{
    if (found.contains(root))
        return;
    found.insert(root);
    const QObjectList children = root->children();
    for (QObject *child : children)
        collectObjects(child, found);
    if (const auto *item = qobject_cast<QQuickItem *>(root)) {
        const QList<QQuickItem *> childItems = item->childItems();
        for (QQuickItem *child : childItems)
            collectObjects(child, found);
    }
}

} // namespace

ThemeManager *tst_GalleryView::manager()
{
    return ThemeManager::getInstance();
}

void tst_GalleryView::addThemeRows()
{
    QTest::addColumn<int>("index");
    for (int row = 0; row < manager()->rowCount(); ++row)
        QTest::newRow(qPrintable(manager()->data(manager()->index(row)).toString())) << row;
}

QList<QQuickItem *> tst_GalleryView::items(const char *type) const
{
    QList<QQuickItem *> found;
    collect(m_view->rootObject(), type, found);
    return found;
}

QQuickItem *tst_GalleryView::item(const char *type, const char *name) const
{
    const QList<QQuickItem *> all = items(type);
    for (QQuickItem *item : all) {
        if (item->property("name").toString() == QLatin1String(name))
            return item;
    }
    return nullptr;
}

QPoint tst_GalleryView::center(const QQuickItem *item) const
{
    return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
}

void tst_GalleryView::initTestCase()
{
    m_renderer.reset(new Renderer);
    manager()->loadThemes(QStringLiteral(GALLERY_THEMES_DIR), QStringLiteral("Daylight"));
    QCOMPARE(manager()->rowCount(), 5);
    m_hasControls = Surroundings::chooseControlsStyle(QStringLiteral(TAVOLINS_QML_IMPORT_PATH));
    QCOMPARE(m_hasControls, bool(GALLERY_HAS_CONTROLS));
}

/// Opens a new window on the first theme.
void tst_GalleryView::open()
{
    // One engine at a time: a second one would report that it shares the manager.
    m_view.reset();
    manager()->setCurrentIndex(0);
    m_view.reset(new GalleryView(QStringLiteral(TAVOLINS_QML_IMPORT_PATH), m_hasControls));
    QCOMPARE(m_view->status(), QQuickView::Ready);
    m_view->show();
    QVERIFY(QTest::qWaitForWindowActive(m_view.get()));
}

void tst_GalleryView::cleanupTestCase()
{
    m_view.reset();
}

void tst_GalleryView::themesLookDifferent()
{
    open();
    QList<QImage> pictures;
    for (int row = 0; row < manager()->rowCount(); ++row) {
        manager()->setCurrentIndex(row);
        const QImage picture = m_view->picture();
        QCOMPARE(picture.size(), m_view->size());
        QVERIFY(!pictures.contains(picture));
        pictures.append(picture);
    }
}

void tst_GalleryView::pixelsHaveTheThemesColors_data()
{
    addThemeRows();
}

void tst_GalleryView::pixelsHaveTheThemesColors()
{
    open();
    QFETCH(int, index);
    manager()->setCurrentIndex(index);
    const QImage picture = m_view->picture();
    const ThemeObjectColors *colors = manager()->current()->colors();

    QCOMPARE(picture.pixelColor(m_view->width() - 4, 4), colors->background());
    QCOMPARE(picture.pixelColor(4, m_view->height() - 4), colors->darkerBackground());
    for (const char *name : colorNames) {
        const QQuickItem *swatch = item("ColorSwatch", name);
        QVERIFY2(swatch, name);
        const QPoint aboveTheLabel = center(swatch) - QPoint(0, 10);
        QCOMPARE(picture.pixelColor(aboveTheLabel), colors->property(name).value<QColor>());
    }
    for (const char *name : classNames) {
        const QQuickItem *row = item("ClassRow", name);
        QVERIFY2(row, name);
        Theme styled;
        styled = *manager()->current();
        styled.setClassnames(QLatin1String(name));
        QCOMPARE(picture.pixelColor(center(row)), styled.colors()->background());
    }
}

void tst_GalleryView::everythingIsShown_data()
{
    addThemeRows();
}

void tst_GalleryView::everythingIsShown()
{
    open();
    QFETCH(int, index);
    manager()->setCurrentIndex(index);
    m_view->picture();
    Theme *theme = manager()->current();

    const QList<QQuickItem *> swatches = items("ColorSwatch");
    QCOMPARE(swatches.size(), 7);
    for (const QQuickItem *swatch : swatches)
        QCOMPARE(swatch->property("ink").value<QColor>(),
                 theme->complementaryColor(swatch->property("value").value<QColor>()));

    QCOMPARE(items("FontRow").size(), 6);
    for (const char *name : fontNames)
        QCOMPARE(item("FontRow", name)->property("value"), theme->fonts()->property(name));

    const QList<QQuickItem *> radii = items("RadiusSample");
    QCOMPARE(radii.size(), 1);
    QCOMPARE(radii.first()->property("radius").toInt(), theme->radius());
    QCOMPARE(items("ClassRow").size(), 5);

    QStringList shown;
    const QList<QQuickItem *> samples = items("StyleSample");
    for (const QQuickItem *sample : samples) {
        const QString style = sample->property("style").toString();
        const QString classname = sample->property("classname").toString();
        const QUrl source = sample->property("source").toUrl();
        QCOMPARE(source, QUrl(theme->getStyle(style, classname)));
        const QList<QQuickItem *> parts = sample->childItems();
        const QQuickItem *loader = parts.first();
        QCOMPARE(loader->property("source").toUrl(), source);
        QVERIFY(loader->property("item").value<QObject *>());
        shown.append(source.fileName());
    }
    QCOMPARE(shown,
             QStringList({ QStringLiteral("Button.qml"), QStringLiteral("Button_danger.qml"),
                           QStringLiteral("Button_primary.qml"), QStringLiteral("Card.qml"),
                           QStringLiteral("Field.qml") }));
}

void tst_GalleryView::nothingIsCutOff_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("index");
    for (const QSize &size : { QSize(900, 640), QSize(1280, 740), QSize(1920, 1080) }) {
        for (int row = 0; row < manager()->rowCount(); ++row) {
            const QString title = manager()->data(manager()->index(row)).toString();
            QTest::newRow(qPrintable(QStringLiteral("%1 at %2 x %3")
                                             .arg(title)
                                             .arg(size.width())
                                             .arg(size.height())))
                    << size << row;
        }
    }
}

void tst_GalleryView::nothingIsCutOff()
{
    open();
    QFETCH(QSize, size);
    QFETCH(int, index);
    m_view->resize(size);
    manager()->setCurrentIndex(index);
    QCOMPARE(m_view->picture().size(), size);

    const QList<QQuickItem *> texts = items("QQuickText");
    QVERIFY(!texts.isEmpty());
    for (const QQuickItem *text : texts) {
        const QByteArray content = text->property("text").toString().toLocal8Bit();
        QVERIFY2(!text->property("truncated").toBool(), content.constData());
        const QRectF area = text->mapRectToScene(text->boundingRect());
        QVERIFY2(area.left() >= 0 && area.right() <= size.width(), content.constData());
    }
}

/// What the window says of saving is not in its pictures.
void tst_GalleryView::picturesPromiseNoEdits()
{
    open();
    const QImage picture = m_view->picture();
    const QList<QQuickItem *> texts = items("QQuickText");
    const auto promise = std::find_if(texts.begin(), texts.end(), [](const QQuickItem *text) {
        return text->property("text").toString() == QLatin1String("Its edits show when saved.");
    });
    QVERIFY(promise != texts.end());
    const QRect area = (*promise)->mapRectToScene((*promise)->boundingRect()).toRect();
    QVERIFY(picture.rect().contains(area));
    QSet<QRgb> colors;
    for (int x = area.left(); x <= area.right(); ++x) {
        for (int y = area.top(); y <= area.bottom(); ++y)
            colors.insert(picture.pixel(x, y));
    }
    QCOMPARE(colors.size(), 1);
}

void tst_GalleryView::listShowsTheCatalogue()
{
    open();
    m_view->picture();
    QStringList shown;
    const QList<QQuickItem *> rows = items("ThemeRow");
    for (const QQuickItem *row : rows)
        shown.append(row->property("title").toString());
    shown.sort();
    QCOMPARE(shown,
             QStringList({ QStringLiteral("Daylight"), QStringLiteral("Dusk"),
                           QStringLiteral("Moss"), QStringLiteral("Plum"),
                           QStringLiteral("Signal") }));
}

void tst_GalleryView::clickSwitches()
{
    open();
    m_view->picture();
    QSignalSpy changed(manager(), &ThemeManager::currentChanged);
    const QList<QQuickItem *> rows = items("ThemeRow");
    for (const QQuickItem *row : rows) {
        if (row->property("title").toString() == QLatin1String("Moss"))
            QTest::mouseClick(m_view.get(), Qt::LeftButton, Qt::NoModifier, center(row));
    }
    QCOMPARE(changed.count(), 1);
    QCOMPARE(manager()->current()->title(), QStringLiteral("Moss"));
    QCOMPARE(m_view->picture().pixelColor(m_view->width() - 4, 4),
             manager()->current()->colors()->background());
}

void tst_GalleryView::keysSwitch()
{
    open();
    const struct
    {
        Qt::Key key;
        int index;
    } steps[] = {
        { Qt::Key_Down, 1 }, { Qt::Key_Down, 2 }, { Qt::Key_Up, 1 }, { Qt::Key_5, 4 },
        { Qt::Key_Down, 4 }, { Qt::Key_1, 0 },    { Qt::Key_Up, 0 }, { Qt::Key_9, 0 },
    };
    for (const auto &step : steps) {
        QTest::keyClick(m_view.get(), step.key);
        QCOMPARE(manager()->currentIndex(), step.index);
    }
}

void tst_GalleryView::keysSwitchFromWithinAField()
{
    open();
    m_view->picture();
    const QList<QQuickItem *> inputs = items("Field");
    QCOMPARE(inputs.size(), 1);
    QTest::mouseClick(m_view.get(), Qt::LeftButton, Qt::NoModifier, center(inputs.first()));
    QVERIFY(inputs.first()->hasActiveFocus());
    QTest::keyClick(m_view.get(), Qt::Key_Down);
    QCOMPARE(manager()->currentIndex(), 1);
}

void tst_GalleryView::inheritedClassesAreTold()
{
    open();
    manager()->setCurrent(manager()->themeFromName(QStringLiteral("Plum")));
    m_view->picture();
    QCOMPARE(item("ClassRow", "danger")->property("origin").toString(), QStringLiteral("Daylight"));
    QCOMPARE(item("ClassRow", "primary")->property("origin").toString(), QString());
}

#if GALLERY_HAS_CONTROLS

void tst_GalleryView::pagesAreTurned()
{
    open();
    const QImage theme = m_view->picture();
    QTest::keyClick(m_view.get(), Qt::Key_PageDown);
    QVERIFY(items("Controls").size() == 1 && items("ColorSwatch").isEmpty());
    QVERIFY(m_view->picture() != theme);
    QTest::keyClick(m_view.get(), Qt::Key_PageUp);
    QVERIFY(items("Controls").isEmpty() && items("ColorSwatch").size() == 7);

    const QList<QQuickItem *> tabs = items("TabButton");
    QCOMPARE(tabs.size(), 2);
    QTest::mouseClick(m_view.get(), Qt::LeftButton, Qt::NoModifier, center(tabs.at(1)));
    QCOMPARE(items("Controls").size(), 1);
    QTest::mouseClick(m_view.get(), Qt::LeftButton, Qt::NoModifier, center(tabs.at(0)));
    QCOMPARE(items("ColorSwatch").size(), 7);
}

void tst_GalleryView::pageShowsAllControls_data()
{
    QTest::addColumn<QString>("control");
    // The two are seen in what is made from them, or around everything.
    const QStringList unseen = { QStringLiteral("AbstractButton"),
                                 QStringLiteral("ApplicationWindow") };
    const QDir style(QStringLiteral(TAVOLINS_QML_IMPORT_PATH "/" TAVOLINS_CONTROLS_DIR));
    const QStringList files = style.entryList({ QStringLiteral("*.qml") });
    QVERIFY(files.size() > 50);
    for (const QString &file : files) {
        const QString control = file.section(QLatin1Char('.'), 0, 0);
        if (!unseen.contains(control))
            QTest::newRow(qPrintable(control)) << control;
    }
}

void tst_GalleryView::pageShowsAllControls()
{
    QFETCH(QString, control);
    if (!m_view || !m_view->rootObject()->property("showsControls").toBool()) {
        open();
        m_view->rootObject()->setProperty("showsControls", true);
    }
    QSet<QObject *> objects;
    collectObjects(m_view->rootObject(), objects);
    const bool isFound = std::any_of(objects.begin(), objects.end(), [&](const QObject *object) {
        const QString type = QLatin1String(object->metaObject()->className());
        return type.section(QLatin1String("_QML"), 0, 0) == control
                || type == QLatin1String("QQuick") + control;
    });
    QVERIFY(isFound);
}

void tst_GalleryView::statesAreSeen_data()
{
    addThemeRows();
}

void tst_GalleryView::statesAreSeen()
{
    open();
    QFETCH(int, index);
    manager()->setCurrentIndex(index);
    const QImage picture = m_view->controlsPicture();
    m_view->rootObject()->setProperty("showsControls", true);

    const QList<QQuickItem *> rows = items("StateRow");
    QVERIFY(rows.size() >= 20);
    for (QQuickItem *row : rows) {
        QHash<QString, QImage> cells;
        QSet<QObject *> objects;
        collectObjects(row, objects);
        for (const QObject *object : std::as_const(objects)) {
            const auto *loader = qobject_cast<const QQuickItem *>(object);
            if (!loader)
                continue;
            const auto *sample = loader->property("item").value<QQuickItem *>();
            const QString state = loader->property("stateShown").toString();
            if (sample && !state.isEmpty()) {
                const QRectF place(QPointF(), QSizeF(loader->width(), loader->height()));
                cells[state] = picture.copy(loader->mapRectToScene(place).toAlignedRect());
            }
        }
        const QImage normal = cells.take(QStringLiteral("Normal"));
        QVERIFY(!normal.isNull());
        for (auto cell = cells.cbegin(); cell != cells.cend(); ++cell)
            QVERIFY2(cell.value() != normal,
                     qPrintable(row->property("name").toString() + QLatin1Char(' ') + cell.key()));
    }
}

#endif

TAVOLINS_TEST_MAIN(tst_GalleryView)
#include "tst_galleryview.moc"
