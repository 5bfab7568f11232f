#include "controlscenario.h"

#include "phase.h"
#include "tests/support/objectcount.h"

#include "manager/thememanager.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtCore/QTemporaryDir>
#include <QtGui/QColor>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <memory>
#include <vector>

namespace {

constexpr int controlsOnThePage = 300;
constexpr int warmUpSwitches = 2;
/// There and back, so that both directions count alike.
constexpr int measuredSwitches = 2;

const QString ours = QStringLiteral("Tavolins");

QByteArray themeText(int look, bool fontsDiffer)
{
    const bool isDark = look == 1;
    const QByteArray size = fontsDiffer && isDark ? "17" : "14";
    const QByteArray radius = fontsDiffer && isDark ? "8" : "4";
    const QByteArray colors = isDark
            ? "\"foreground\": \"#e6e6f2\", \"background\": \"#1f2131\", \"lighterBackground\": "
              "\"#2b2e42\", \"darkerBackground\": \"#161723\", \"selection\": \"#2a3a7c\""
            : "\"foreground\": \"#2b2722\", \"background\": \"#f6f1e6\", \"lighterBackground\": "
              "\"#fffdf8\", \"darkerBackground\": \"#e9e1d0\", \"selection\": \"#ffe9b8\"";
    const QByteArray primary = isDark ? "\"foreground\": \"#12162a\", \"background\": \"#9db8ff\""
                                      : "\"foreground\": \"#ffffff\", \"background\": \"#1d6a66\"";
    return "{\"title\": \"" + QByteArray::number(look) + "\", \"global\": {\"colors\": {" + colors
            + "}, \"fonts\": {\"main\": {\"pointSize\": " + size + "}}, \"radius\": " + radius
            + "}, \"primary\": {\"colors\": {" + primary + "}}}";
}

/// What this Qt calls \a style.
QByteArray nameOf(const QString &style)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    if (style == QLatin1String("Default"))
        return "Basic";
#endif
    return style.toUtf8();
}

/// An engine whose controls have the style, and for ours the two themes.
class Stage
{
public:
    Stage(const QString &style, bool fontsDiffer)
        : m_isOurs(style == ours)
        , m_isMaterial(style == QLatin1String("Material"))
    {
        qputenv("QT_QUICK_CONTROLS_STYLE", nameOf(style));
        if (m_isOurs) {
            // Qt 5 does not ask the engine where styles are.
            qputenv("QT_QUICK_CONTROLS_STYLE_PATH",
                    TAVOLINS_QML_IMPORT_PATH "/" TAVOLINS_CONTROLS_DIR "/..");
            for (int look = 0; look < 2; ++look) {
                QFile file(m_themes.filePath(QString::number(look) + QStringLiteral(".thm")));
                file.open(QIODevice::WriteOnly);
                file.write(themeText(look, fontsDiffer));
            }
            ThemeManager::getInstance()->loadThemes(m_themes.path(), QStringLiteral("0"));
        }
        m_engine.addImportPath(QStringLiteral(TAVOLINS_QML_IMPORT_PATH));
    }

    /// Lines of the window with what show() switches.
    QByteArray windowLines() const
    {
        return m_isMaterial ? "property int look: 0\nMaterial.theme: look\n" : "";
    }

    std::unique_ptr<QQmlComponent> component(const QByteArray &body)
    {
        std::unique_ptr<QQmlComponent> component(new QQmlComponent(&m_engine));
        QByteArray imports = "import QtQuick 2.15\nimport QtQuick.Controls 2.15\n";
        if (m_isMaterial)
            imports += "import QtQuick.Controls.Material 2.15\n";
        component->setData(imports + body, QUrl());
        return component;
    }

    void show(QObject *root, int look) const
    {
        if (m_isOurs) {
            auto *manager = ThemeManager::getInstance();
            manager->setCurrent(manager->themeFromName(QString::number(look)));
        } else {
            root->setProperty("look", look);
        }
    }

    /// Leaves nothing to be destroyed or collected while others are measured.
    void clearUp()
    {
        settle();
        m_engine.collectGarbage();
        settle();
    }

    QQmlContext *context() { return m_engine.rootContext(); }

private:
    bool m_isOurs;
    bool m_isMaterial;
    QTemporaryDir m_themes;
    QQmlEngine m_engine;
};

QJsonObject error(const QString &text)
{
    return { { QStringLiteral("error"), text } };
}

/// Every control that styles have a file for.
QStringList controls()
{
    const QDir style(QStringLiteral(TAVOLINS_QML_IMPORT_PATH "/" TAVOLINS_CONTROLS_DIR));
    QStringList names = style.entryList({ QStringLiteral("*.qml") }, QDir::Files);
    names.replaceInStrings(QStringLiteral(".qml"), QString());
    return names;
}

/// What an application would write into a control.
QByteArray contentOf(const QString &control)
{
    static const QHash<QString, QByteArray> contents = {
        { QStringLiteral("ComboBox"), "model: [\"One\", \"Two\"]" },
        { QStringLiteral("Dialog"), "title: \"Title\"; standardButtons: Dialog.Ok" },
        { QStringLiteral("DialogButtonBox"), "standardButtons: DialogButtonBox.Ok" },
        { QStringLiteral("GroupBox"), "title: \"Title\"" },
        { QStringLiteral("HorizontalHeaderView"), "model: [\"Head\"]" },
        { QStringLiteral("Menu"), "Action { text: \"Text\" }" },
        { QStringLiteral("MenuBar"), "Menu { title: \"Title\" }" },
        { QStringLiteral("PageIndicator"), "count: 3" },
        { QStringLiteral("SplitView"), "Item { } Item { }" },
        { QStringLiteral("StackView"), "initialItem: Item { }" },
        { QStringLiteral("SwipeView"), "Item { }" },
        { QStringLiteral("TabBar"), "TabButton { text: \"Text\" }" },
        { QStringLiteral("Tumbler"), "model: 5" },
        { QStringLiteral("VerticalHeaderView"), "model: [\"Head\"]" },
    };
    static const QStringList texts{
        QStringLiteral("Button"),        QStringLiteral("CheckBox"),
        QStringLiteral("CheckDelegate"), QStringLiteral("DelayButton"),
        QStringLiteral("ItemDelegate"),  QStringLiteral("Label"),
        QStringLiteral("MenuBarItem"),   QStringLiteral("MenuItem"),
        QStringLiteral("RadioButton"),   QStringLiteral("RadioDelegate"),
        QStringLiteral("RoundButton"),   QStringLiteral("SwipeDelegate"),
        QStringLiteral("Switch"),        QStringLiteral("SwitchDelegate"),
        QStringLiteral("TabButton"),     QStringLiteral("TextArea"),
        QStringLiteral("TextField"),     QStringLiteral("ToolButton"),
        QStringLiteral("ToolTip"),
    };
    return texts.contains(control) ? QByteArray("text: \"Text\"") : contents.value(control);
}

/// Makes what \a component describes in \a window, as if it stood in the window's document.
std::unique_ptr<QObject> make(QQmlComponent *component, QQmlContext *context, QQuickWindow *window)
{
    std::unique_ptr<QObject> object(component->beginCreate(context));
    if (auto *item = qobject_cast<QQuickItem *>(object.get()))
        item->setParentItem(window->contentItem());
    component->completeCreate();
    return object;
}

QByteArray pageText(const QByteArray &windowLines)
{
    const char *const kinds[] = { "Button",      "CheckBox",  "RadioButton",  "Switch",
                                  "TextField",   "ComboBox",  "SpinBox",      "Slider",
                                  "ProgressBar", "Label",     "ItemDelegate", "ToolButton",
                                  "GroupBox",    "TabButton", "Frame" };
    QByteArray page = "ApplicationWindow {\n" + windowLines;
    for (int i = 0; i < controlsOnThePage; ++i) {
        const char *kind = kinds[std::size_t(i) % (sizeof kinds / sizeof *kinds)];
        page += QByteArray(kind) + " { " + contentOf(QLatin1String(kind)) + " }\n";
    }
    return page + "}\n";
}

/// The colors of all items below \a item, one after the other.
void collectColors(const QQuickItem *item, QList<QColor> *colors)
{
    const QVariant color = item->property("color");
    if (color.userType() == QMetaType::QColor)
        colors->append(color.value<QColor>());
    const QList<QQuickItem *> children = item->childItems();
    for (const QQuickItem *child : children)
        collectColors(child, colors);
}

QList<QColor> colorsIn(const QQuickWindow *window)
{
    QList<QColor> colors{ window->color() };
    collectColors(window->contentItem(), &colors);
    return colors;
}

} // namespace

QJsonObject ControlScenario::create() const
{
    Stage stage(style, fontsDiffer);
    const auto windowComponent = stage.component("ApplicationWindow { }");
    const std::unique_ptr<QObject> root(windowComponent->create());
    if (!root)
        return { { QStringLiteral("unavailable"), windowComponent->errorString() } };
    auto *window = qobject_cast<QQuickWindow *>(root.get());

    const QStringList all = controls();
    std::vector<std::unique_ptr<QQmlComponent>> components;
    for (const QString &control : all) {
        components.push_back(stage.component(control.toUtf8() + " { " + contentOf(control) + " }"));
        // What the first of its kind has to prepare.
        for (int i = 0; i < 2; ++i)
            make(components.back().get(), stage.context(), window);
    }

    QJsonObject result;
    QJsonObject objects;
    const ManyPhases phases;
    for (int i = 0; i < all.size(); ++i) {
        const QString &control = all[i];
        QQmlComponent *component = components[std::size_t(i)].get();
        stage.clearUp();

        std::vector<std::unique_ptr<QObject>> made;
        made.reserve(std::size_t(count));
        const QByteArray name = control.toLatin1();
        Phase phase(name.constData());
        phase.begin();
        for (int number = 0; number < count; ++number)
            made.push_back(make(component, stage.context(), window));
        phase.end();
        if (!made.back())
            return error(control + QStringLiteral(": ") + component->errorString());
        result.insert(control + QStringLiteral("_ns"), phase.finish() / count);
        made.clear();
        stage.clearUp();

        const ObjectCount counted;
        const std::unique_ptr<QObject> one = make(component, stage.context(), window);
        objects.insert(control, counted.value());
    }
    result.insert(QStringLiteral("objects"), objects);
    return result;
}

QJsonObject ControlScenario::switchPage() const
{
    Stage stage(style, fontsDiffer);
    const auto component = stage.component(pageText(stage.windowLines()));
    const std::unique_ptr<QObject> root(component->create());
    if (!root)
        return { { QStringLiteral("unavailable"), component->errorString() } };
    const auto *window = qobject_cast<QQuickWindow *>(root.get());
    settle();

    const QList<QColor> before = colorsIn(window);
    for (int i = 1; i <= warmUpSwitches; ++i) {
        stage.show(root.get(), i % 2);
        settle();
    }
    Phase phase("switch");
    int changed = 0;
    for (int i = 1; i <= measuredSwitches; ++i) {
        phase.begin();
        stage.show(root.get(), i % 2);
        settle();
        phase.end();
        const QList<QColor> now = colorsIn(window);
        if (i % 2) {
            for (int color = 0; color < now.size(); ++color)
                changed += now[color] != before[color];
        } else if (now != before) {
            return error(QStringLiteral("a switch there and back changed something"));
        }
    }
    if (changed < controlsOnThePage)
        return error(QStringLiteral("only %1 colors followed").arg(changed));
    return { { QStringLiteral("switch_ns"), phase.finish() / measuredSwitches },
             { QStringLiteral("switches"), measuredSwitches } };
}

QStringList ControlScenario::styles()
{
    return { QStringLiteral("Default"), QStringLiteral("Fusion"), QStringLiteral("Material"),
             ours };
}
