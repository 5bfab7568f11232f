#include "controls/controlstestcase.h"

#include "controls/samples.h"
#include "manager/thememanager.h"
#include "theme/theme.h"

#include <QtCore/QUrl>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlProperty>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickItemGrabResult>
#include <QtQuick/QQuickWindow>
#include <QtTest/QSignalSpy>
#include <QtTest/QtTest>

namespace {

// Those of QtQuick's items and of the templates that something is painted with.
const char *const paintingProperties[] = { "color", "selectionColor", "selectedTextColor",
                                           "placeholderTextColor", "border.color" };

/// Whether \a property, of the color \a color, is one that \a item paints with now.
bool isPainted(QQuickItem *item, QLatin1String property, const QColor &color)
{
    if (property == QLatin1String("placeholderTextColor"))
        return !item->property("placeholderText").toString().isEmpty();
    // A rectangle without a frame tells of a black one as soon as it is asked.
    if (property == QLatin1String("border.color"))
        return color != Qt::black
                && QQmlProperty(item, QStringLiteral("border.width")).read().toReal() > 0;
    return true;
}

void collect(QQuickItem *item, const QString &place, QMap<QString, QColor> &colors)
{
    if (!item->isVisible() || qFuzzyIsNull(item->opacity()))
        return;
    const QString name = place + QLatin1Char(' ')
            + QString::fromLatin1(item->metaObject()->className())
                      .section(QStringLiteral("_QML"), 0, 0);
    for (const char *property : paintingProperties) {
        const QQmlProperty color(item, QLatin1String(property));
        const QColor value = color.read().value<QColor>();
        if (color.propertyType() == QMetaType::QColor
            && isPainted(item, QLatin1String(property), value))
            colors.insert(name + QLatin1Char('.') + QLatin1String(property), value);
    }
    const QList<QQuickItem *> children = item->childItems();
    for (int i = 0; i < children.size(); ++i)
        collect(children.at(i), place + QLatin1Char('/') + QString::number(i), colors);
}

/// Gives an owner to what Qt leaves behind in every style: the handles of a SplitView, and what is
/// uncovered of a SwipeDelegate.
void adopt(QQuickItem *item)
{
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children) {
        if (!child->parent()
            && (item->inherits("QQuickSplitView") || item->inherits("QQuickSwipeDelegate")))
            child->setParent(item);
        adopt(child);
    }
}

} // namespace

void ControlsTestCase::initTestCase()
{
    qputenv("QT_QUICK_CONTROLS_STYLE", "Tavolins");
    qputenv("QT_QUICK_CONTROLS_STYLE_PATH",
            TAVOLINS_QML_IMPORT_PATH "/" TAVOLINS_CONTROLS_DIR "/..");
    // Nobody watches; frames need not wait for each other.
    qputenv("QT_QPA_UPDATE_IDLE_TIME", "0");
    ThemeManager::getInstance();
    m_renderer.reset(new Renderer);
    m_engine.reset(new QQmlEngine);
    m_engine->addImportPath(QStringLiteral(TAVOLINS_QML_IMPORT_PATH));
    m_engine->rootContext()->setContextProperty(QStringLiteral("iconFile"),
                                                styleFile(QStringLiteral("impl/images/plus.png")));
}

void ControlsTestCase::cleanup()
{
    closeAll();
    ThemeManager *manager = ThemeManager::getInstance();
    manager->setCurrent(new Theme(manager));
    TestCase::cleanup();
}

void ControlsTestCase::addControlRows()
{
    QTest::addColumn<QString>("control");
    const QStringList controls = Samples::controls();
    for (const QString &control : controls)
        QTest::newRow(qPrintable(control)) << control;
}

QQmlEngine *ControlsTestCase::engine() const
{
    return m_engine.get();
}

QObject *ControlsTestCase::create(const QByteArray &qml)
{
    QQmlComponent component(m_engine.get());
    component.setData(Samples::imports() + qml, QUrl());
    m_objects.emplace_back(component.create());
    if (!m_objects.back())
        qWarning("%s", qPrintable(component.errorString()));
    return m_objects.back().get();
}

QQuickWindow *ControlsTestCase::show(const QByteArray &body)
{
    auto *window = qobject_cast<QQuickWindow *>(
            create("ApplicationWindow { id: window; visible: true; width: 640; height: 400\n"
                   "background: Rectangle { color: window.color }\n"
                   + body + " }"));
    // Most often enough; waiting takes ten milliseconds at least.
    QCoreApplication::processEvents();
    if (window && !QTest::qWaitForWindowExposed(window))
        qWarning("the window is not shown");
    return window;
}

QQuickWindow *ControlsTestCase::showSample(const QString &control, const QByteArray &common,
                                           const QByteArray &ofWindow)
{
    if (control == QLatin1String("ApplicationWindow"))
        return show(common + "\n" + ofWindow);
    if (Samples::isPopup(control)) {
        QQuickWindow *window = show("readonly property bool isOpen: popup.opened\n" + ofWindow
                                    + '\n'
                                    + Samples::looks(control, "id: popup\n" + common).join());
        // A drawer slides in.
        if (window && !QTest::qWaitFor([window]() { return window->property("isOpen").toBool(); }))
            qWarning("the popup does not open");
        return window;
    }
    return show(ofWindow + "\nFlow { objectName: \"samples\"; anchors.fill: parent; spacing: 8\n"
                + Samples::looks(control, common).join() + " }");
}

void ControlsTestCase::closeAll()
{
    for (; !m_objects.empty(); m_objects.pop_back()) {
        if (const auto *window = qobject_cast<QQuickWindow *>(m_objects.back().get()))
            adopt(window->contentItem());
    }
    deleteDeferred();
}

ControlsTestCase::Colors ControlsTestCase::colors(QQuickWindow *window)
{
    return colors(window->contentItem());
}

ControlsTestCase::Colors ControlsTestCase::colors(QQuickItem *item)
{
    Colors colors;
    collect(item, QString(), colors);
    return colors;
}

QImage ControlsTestCase::picture(QQuickWindow *window)
{
    // Not grabWindow(): without a display nothing can be read back from a window.
    QCoreApplication::processEvents();
    const QSharedPointer<QQuickItemGrabResult> result = window->contentItem()->grabToImage();
    QSignalSpy ready(result.data(), &QQuickItemGrabResult::ready);
    ready.wait();
    return result->image().convertToFormat(QImage::Format_RGB32);
}

QQuickItem *ControlsTestCase::find(QQuickItem *item,
                                   const std::function<bool(QQuickItem *)> &matches)
{
    if (matches(item))
        return item;
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children) {
        if (QQuickItem *found = find(child, matches))
            return found;
    }
    return nullptr;
}

QQuickItem *ControlsTestCase::find(QQuickWindow *window, const char *name)
{
    return find(window->contentItem(),
                [name](QQuickItem *item) { return item->objectName() == QLatin1String(name); });
}

QList<QQuickItem *> ControlsTestCase::samples(QQuickWindow *window)
{
    const QQuickItem *flow = find(window, "samples");
    return flow ? flow->childItems() : QList<QQuickItem *>();
}

QByteArray ControlsTestCase::themeAround(const QString &title, int hue, int fontSize)
{
    const auto color = [hue](int turn, int saturation, int lightness) {
        return '"' + QColor::fromHsl((hue + turn) % 360, saturation, lightness).name().toLatin1()
                + '"';
    };
    const auto scope = [&color](int turn) {
        return "{\"colors\": {\"foreground\": " + color(turn, 200, 20)
                + ", \"background\": " + color(turn, 150, 190) + "}}";
    };
    return "{\"title\": \"" + title.toLatin1() + "\", \"global\": {\"colors\": {"
            + "\"foreground\": " + color(0, 200, 30) + ", \"lighterForeground\": "
            + color(5, 200, 60) + ", \"darkerForeground\": " + color(10, 200, 15)
            + ", \"background\": " + color(15, 150, 225) + ", \"lighterBackground\": "
            + color(20, 150, 240) + ", \"darkerBackground\": " + color(25, 150, 205)
            + ", \"selection\": " + color(30, 250, 215)
            + "}, \"fonts\": {\"main\": {\"family\": \"DejaVu Sans\", " + "\"pointSize\": "
            + QByteArray::number(fontSize) + "}}, \"radius\": " + QByteArray::number(hue % 7)
            + "},\n\"primary\": {\"colors\": {\"foreground\": " + color(35, 200, 245)
            + ", \"background\": " + color(40, 200, 70) + "}},\n\"danger\": " + scope(60)
            + ",\n\"muted\": {\"colors\": {\"foreground\": " + color(80, 200, 80) + "}}}";
}

Theme *ControlsTestCase::makeCurrent(const QString &name, const QByteArray &text)
{
    ThemeManager *manager = ThemeManager::getInstance();
    auto *theme = new Theme(manager);
    if (theme->load(write(name, text)) != 0)
        qFatal("can't load %s", qPrintable(name));
    manager->addTheme(theme);
    manager->setCurrent(theme);
    return theme;
}

QUrl ControlsTestCase::styleFile(const QString &name)
{
    return QUrl::fromLocalFile(
            QStringLiteral(TAVOLINS_QML_IMPORT_PATH "/" TAVOLINS_CONTROLS_DIR "/") + name);
}

QStringList ControlsTestCase::bundledThemes()
{
    static const QStringList titles = []() {
        ThemeManager *manager = ThemeManager::getInstance();
        const int before = manager->rowCount();
        manager->loadThemes(QStringLiteral(TAVOLINS_THEMES_DIR));
        QStringList loaded;
        for (int row = before; row < manager->rowCount(); ++row)
            loaded.append(manager->data(manager->index(row)).toString());
        return loaded;
    }();
    return titles;
}

void ControlsTestCase::switchTo(const QString &title)
{
    ThemeManager *manager = ThemeManager::getInstance();
    manager->setCurrent(manager->themeFromName(title));
}
