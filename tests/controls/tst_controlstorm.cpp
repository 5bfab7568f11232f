#include "controls/controlstestcase.h"
#include "controls/samples.h"
#include "manager/thememanager.h"
#include "support/heap.h"
#include "theme/theme.h"

#include <QtCore/QByteArrayList>
#include <QtCore/QPointer>
#include <QtCore/QRandomGenerator>
#include <QtCore/QRegularExpression>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlProperty>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtTest/QtTest>

#include <algorithm>
#include <memory>
#include <vector>

#if defined(TAVOLINS_HEAP_IS_REPLACED)
/// A drawer that is destroyed while it is open leaves behind what places it. What QML makes is
/// allocated elsewhere.
extern "C" const char *__lsan_default_suppressions();
extern "C" const char *__lsan_default_suppressions()
{
    return "leak:libQt5QuickTemplates2\nleak:libQt6QuickTemplates2\n";
}
#endif

/// All controls in one another, at random: no line on the log, whatever is made, destroyed, opened,
/// clicked and switched, and in which order. TAVOLINS_STORMS=<number> asks for more than ten.
class tst_ControlStorm : public ControlsTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void storm_data();
    void storm();

private:
    QByteArray nest(int depth);
    QByteArray common();
    int below(int end) { return int(m_random.bounded(end)); }
    template <typename List>
    const typename List::value_type &anyOf(const List &list)
    {
        return *(list.begin() + below(int(list.size())));
    }

    QQuickWindow *makeWindow(QQmlEngine *engine);
    void make(QQuickWindow *window);
    void readTheme(int number);
    void step();

    QRandomGenerator m_random;
    std::vector<std::unique_ptr<QObject>> m_windows;
    QList<QPointer<QObject>> m_roots;
    QList<QPointer<Theme>> m_themes;
    int m_made = 0;
};

namespace {

const QByteArray reusingList = "ListView { width: 200; height: 60; reuseItems: true\n"
                               "model: window.rows; delegate: Pane { %1 } }";

const QByteArrayList containers = {
    "Pane { %1 }",
    "Page { header: ToolBar { ToolButton { text: \"Text\" } } %1 }",
    "Frame { %1 }",
    "GroupBox { title: \"Title\"; %1 }",
    "ScrollView { width: 80; height: 60; %1 }",
    "SwipeView { width: 200; height: 100; %1 }",
    "StackView { width: 200; height: 100; initialItem: Pane { %1 } }",
    "SplitView { width: 200; height: 100; %1 }",
    "Loader { sourceComponent: Pane { %1 } }",
    "Row { %1 }",
    reusingList,
    "Dialog { title: \"Title\"; standardButtons: Dialog.Ok; %1 }",
    "Drawer { %1 }",
    "Popup { modal: true; %1 }",
};

const QByteArrayList classes = { "\"\"", "\"danger\"", "\"primary\"", "\"muted danger\"",
                                 "window.classes" };

/// The popups of \a object and of all items below it.
void collectPopups(const QObject *object, QObjectList *popups)
{
    for (QObject *child : object->children()) {
        if (child->inherits("QQuickPopup"))
            popups->append(child);
    }
    if (const auto *item = qobject_cast<const QQuickItem *>(object)) {
        const QList<QQuickItem *> children = item->childItems();
        for (const QQuickItem *child : children)
            collectPopups(child, popups);
    }
}

const int themeCount = 6;
const int stepCount = 100;

} // namespace

/// Themes that nobody would make are among them.
void tst_ControlStorm::readTheme(int number)
{
    const int hue = below(360);
    static const int sizes[themeCount] = { 14, 20, 14, 1, 200, 0 };
    QByteArray text = themeAround(QString::number(number), hue, sizes[number]);
    if (number == 2) {
        text = QString::fromUtf8(text)
                       .replace(QRegularExpression(QStringLiteral("#[0-9a-f]{6}")),
                                QStringLiteral("#000000"))
                       .toUtf8();
    }
    if (number == 5)
        text = "{\"title\": \"5\", \"global\": {\"fonts\": {\"main\": {\"family\": \"Nowhere\"}}}}";
    auto *theme = new Theme(ThemeManager::getInstance());
    theme->load(write(QString::number(number) + QStringLiteral(".thm"), text));
    ThemeManager::getInstance()->addTheme(theme);
    if (number < m_themes.size())
        m_themes[number] = theme;
    else
        m_themes.append(theme);
}

QQuickWindow *tst_ControlStorm::makeWindow(QQmlEngine *engine)
{
    QQmlComponent component(engine);
    component.setData(
            Samples::imports()
                    + "ApplicationWindow { id: window; visible: true; width: 400; height: 300\n"
                      "property string classes; property int rows: 3\n"
                      "property QtObject other; property int turns: 0\n"
                      "Connections { target: ThemeManager; function onCurrentChanged() {\n"
                      "if (window.turns > 0 && window.other) { --window.turns\n"
                      "const next = window.other; window.other = ThemeManager.current\n"
                      "ThemeManager.current = next } } } }",
            QUrl());
    m_windows.emplace_back(component.create());
    if (!m_windows.back())
        qWarning("%s", qPrintable(component.errorString()));
    return qobject_cast<QQuickWindow *>(m_windows.back().get());
}

/// Lines that stand in every control.
QByteArray tst_ControlStorm::common()
{
    return below(2) ? "Theme.classnames: " + anyOf(classes) : QByteArray();
}

QByteArray tst_ControlStorm::nest(int depth)
{
    if (depth > 0 && below(3)) {
        QByteArray children;
        for (int i = below(3); i >= 0; --i)
            children += nest(depth - 1) + '\n';
        QByteArray container = anyOf(containers);
        return container.replace("%1", common() + '\n' + children);
    }
    QString control;
    do
        control = anyOf(Samples::controls());
    while (control == QLatin1String("ApplicationWindow"));
    QByteArray look = anyOf(Samples::looks(control, common()));
    return look.replace("visible: true; ", "");
}

void tst_ControlStorm::make(QQuickWindow *window)
{
    QQmlContext *context = qmlContext(window);
    const QByteArray qml = nest(3);
    QQmlComponent component(context->engine());
    component.setData(Samples::imports() + qml, QUrl());
    QObject *object = component.beginCreate(context);
    if (!object) {
        qWarning("%s", qPrintable(component.errorString()));
        return;
    }
    object->setParent(window);
    if (auto *item = qobject_cast<QQuickItem *>(object))
        item->setParentItem(window->contentItem());
    else
        object->setProperty("parent", QVariant::fromValue(window->contentItem()));
    component.completeCreate();
    m_roots.append(object);
    ++m_made;
}

void tst_ControlStorm::step()
{
    auto *window = qobject_cast<QQuickWindow *>(anyOf(m_windows).get());
    m_roots.removeAll(nullptr);
    QObject *root = m_roots.isEmpty() ? nullptr : anyOf(m_roots).data();
    auto *item = qobject_cast<QQuickItem *>(root);
    ThemeManager *manager = ThemeManager::getInstance();
    static const int sizes[] = { 0, 1, 7, 300, 5000 };
    switch (below(17)) {
    case 0:
    case 1:
    case 2:
    case 3:
        make(window);
        break;
    case 4:
        delete root;
        break;
    case 5:
    case 6:
        manager->setCurrent(anyOf(m_themes));
        break;
    case 7: {
        const int number = below(themeCount);
        delete m_themes.at(number);
        readTheme(number);
        break;
    }
    case 8: {
        QObjectList popups;
        collectPopups(window, &popups);
        collectPopups(window->contentItem(), &popups);
        for (QObject *popup : qAsConst(popups)) {
            // Opening one may close others with what is in them, and Qt remarks that there is no
            // window then.
            const auto *parent = popup->property("parent").value<QQuickItem *>();
            if (parent && parent->window())
                QMetaObject::invokeMethod(popup, below(2) ? "open" : "close");
        }
        break;
    }
    case 9:
        window->setProperty("classes", below(2) ? QStringLiteral("danger") : QString());
        break;
    case 10:
        window->setProperty("rows", below(9));
        break;
    case 11:
        window->resize(1 + sizes[below(4)], 1 + sizes[below(4)]);
        break;
    case 12:
        if (root) {
            root->setProperty("width", sizes[below(5)]);
            root->setProperty("height", sizes[below(5)]);
        }
        break;
    case 13:
        if (item) {
            QQmlProperty(item, QStringLiteral("LayoutMirroring.enabled"), qmlContext(window))
                    .write(below(2) == 0);
            QQmlProperty(item, QStringLiteral("LayoutMirroring.childrenInherit"),
                         qmlContext(window))
                    .write(true);
            item->setEnabled(below(2) == 0);
        }
        break;
    case 14:
        window->setProperty("other", QVariant::fromValue<QObject *>(anyOf(m_themes)));
        window->setProperty("turns", 3);
        break;
    case 15: {
        // In the place of the theme's.
        QFont font;
        font.setPixelSize(below(2) ? 1 : 200);
        window->setProperty("font", font);
        break;
    }
    default: {
        // No user clicks what is about to be deleted.
        QCoreApplication::processEvents();
        deleteDeferred();
        const QPoint place(below(window->width()), below(window->height()));
        QTest::mouseClick(window, Qt::LeftButton, Qt::NoModifier, place);
        static const Qt::Key keys[] = { Qt::Key_Tab, Qt::Key_Space, Qt::Key_Down, Qt::Key_Right,
                                        Qt::Key_Escape };
        QTest::keyClick(window, keys[below(5)]);
    }
    }
    if (below(2)) {
        QCoreApplication::processEvents();
        deleteDeferred();
    }
    if (below(8) == 0)
        picture(window);
}

void tst_ControlStorm::storm_data()
{
    QTest::addColumn<quint32>("seed");
    const int more = qEnvironmentVariableIntValue("TAVOLINS_STORMS");
    for (int seed = 1; seed <= std::max(10, more); ++seed)
        QTest::addRow("seed %d", seed) << quint32(seed);
}

void tst_ControlStorm::storm()
{
    QFETCH(quint32, seed);
    m_random.seed(seed);
    m_made = 0;
    for (int number = 0; number < themeCount; ++number)
        readTheme(number);
    std::unique_ptr<QQmlEngine> other(new QQmlEngine);
    other->addImportPath(QStringLiteral(TAVOLINS_QML_IMPORT_PATH));
    other->rootContext()->setContextProperty(QStringLiteral("iconFile"),
                                             styleFile(QStringLiteral("impl/images/plus.png")));
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    // Qt 5 remarks that two engines share the singleton.
    expectLog(
            QStringLiteral("QQmlEngine::setContextForObject(): Object already has a QQmlContext"));
#endif
    for (QQmlEngine *one : { engine(), other.get() }) {
        for (int i = 0; i < 2; ++i)
            QVERIFY(makeWindow(one));
    }
    for (int i = 0; i < stepCount; ++i)
        step();
    QVERIFY(m_made > stepCount / 10);

    // Some windows before their engine, and some after it.
    while (int(m_windows.size()) > below(4))
        m_windows.erase(m_windows.begin() + below(int(m_windows.size())));
    other.reset();
    m_windows.clear();
    m_roots.clear();
    m_themes.clear();
}

TAVOLINS_TEST_MAIN(tst_ControlStorm)
#include "tst_controlstorm.moc"
