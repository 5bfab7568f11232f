// An application that shows a theme and ends. Usage:
//
//   exitapp <theme folder> <when> <order>
//
// <when> is what goes on as it ends, <order> the order in which it deletes its objects, as in
// "view,engine,app". Nothing is written out, except about a broken call.

#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickView>

#include <cstdio>
#include <cstdlib>

namespace {

/// What QML calls to have the application end, in the middle of what it does.
class Ending : public QObject
{
    Q_OBJECT

public:
    Ending(const QString &folder, const QString &when, bool showsPopup)
        : m_folder(folder)
        , m_when(when)
        , m_showsPopup(showsPopup)
    {
    }

    Q_INVOKABLE QString when() const { return m_when; }
    Q_INVOKABLE bool showsPopup() const { return m_showsPopup; }

public Q_SLOTS:
    void save(bool completely)
    {
        QFile file(m_folder + QLatin1String("/day.thm"));
        if (!file.open(QIODevice::ReadOnly))
            std::abort();
        QByteArray text = file.readAll();
        file.close();
        text.replace("#102030", "#203040");
        if (!completely)
            text.truncate(text.size() / 2);
        // Written, while the notification is still to come.
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            std::abort();
    }

    void quit() { QCoreApplication::quit(); }
    void exitAtOnce() { std::exit(0); }

private:
    QString m_folder;
    QString m_when;
    bool m_showsPopup;
};

const char *const code = R"(
import QtQuick 2.15
import QtQuick.Controls 2.15
import )" TAVOLINS_QML_URI R"( 1.0

Rectangle {
    property string when: ending.when()
    property bool started: false

    width: 100
    height: 100
    color: Theme.colors.background
    radius: Theme.radius

    function changed() {
        if (!started)
            return
        started = false
        if (when === "exit in a handler")
            ending.exitAtOnce()
        ending.quit()
    }

    function start() {
        started = true
        switch (when) {
        case "switch":
        case "exit in a handler":
            ThemeManager.setCurrent(night())
            break
        case "half written":
            ending.save(false)
            ending.quit()
            break
        case "written":
            ending.save(true)
            ending.quit()
            break
        case "reload":
            ending.save(true)
            break
        default:
            ending.quit()
        }
    }

    function night() {
        for (let i = 0; i < themes.count; ++i) {
            if (themes.itemAt(i).theme.title === "Night")
                return themes.itemAt(i).theme
        }
    }

    Theme.onNeedUpdate: changed()
    Component.onCompleted: ThemeManager.loadThemes(folder, "Day")

    Repeater {
        id: themes
        model: ThemeManager
        Text {
            property QtObject theme: pointer
            text: display
            color: Theme.colors.foreground
            font: Theme.fonts.mainFont
            Theme.classnames: index % 2 ? "warning" : ""
        }
    }
    Popup {
        visible: ending.showsPopup()
        background: Rectangle { color: Theme.colors.lighterBackground }
    }
}
)";

struct Application
{
    QGuiApplication *app;
    QQmlEngine *engine;
    QQuickView *view;
};

Application objects;

void deleteObject(const QString &name)
{
    if (name == QLatin1String("app"))
        delete objects.app;
    else if (name == QLatin1String("engine"))
        delete objects.engine;
    else if (name == QLatin1String("view"))
        delete objects.view;
    else
        std::abort();
}

} // namespace

int main(int argc, char *argv[])
{
    if (argc != 4) {
        std::fputs("usage: exitapp <theme folder> <when> <order>\n", stderr);
        return 2;
    }
    const QString folder = QString::fromLocal8Bit(argv[1]);
    const QString when = QString::fromLocal8Bit(argv[2]);
    const QStringList order = QString::fromLocal8Bit(argv[3]).split(QLatin1Char(','));

    objects.app = new QGuiApplication(argc, argv);
    // Qt's own popups crash when they are closed after the application object is gone.
    const bool viewGoesFirst = order.indexOf(QStringLiteral("view"))
            < order.indexOf(QStringLiteral("app"));
    Ending ending(folder, when, viewGoesFirst);
    objects.engine = new QQmlEngine;
    objects.engine->addImportPath(QStringLiteral(TAVOLINS_QML_IMPORT_PATH));
    objects.engine->rootContext()->setContextProperty(QStringLiteral("ending"), &ending);
    objects.engine->rootContext()->setContextProperty(QStringLiteral("folder"), folder);
    objects.view = new QQuickView(objects.engine, nullptr);
    auto *component = new QQmlComponent(objects.engine, objects.engine);
    component->setData(code, QUrl());
    QObject *root = component->create();
    if (!root) {
        std::fputs(qPrintable(component->errorString()), stderr);
        return 3;
    }
    objects.view->setContent(QUrl(), component, root);
    objects.view->show();

    int result = 0;
    if (when != QLatin1String("no event loop")) {
        QTimer::singleShot(0, root, [root] { QMetaObject::invokeMethod(root, "start"); });
        result = QCoreApplication::exec();
    }
    for (const QString &name : order)
        deleteObject(name);
    return result;
}

#include "exitapp.moc"
