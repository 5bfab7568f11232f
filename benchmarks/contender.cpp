#include "contender.h"

#include "look.h"
#include "themefiles.h"
#include "yardsticks.h"

#include "manager/thememanager.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QPalette>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlProperty>

#include <vector>

namespace {

Contender plain(const QString &name, const QString &itemType)
{
    Contender contender;
    contender.name = name;
    contender.itemType = itemType;
    if (itemType == QLatin1String("Control")) {
        contender.imports = QStringLiteral("import QtQuick.Controls 2.15");
        contender.cornerType = contender.faceType = QStringLiteral("color");
        contender.isPeer = true;
    }
    return contender;
}

Contender qmlSingleton()
{
    Contender contender;
    contender.name = QStringLiteral("qml-singleton");
    contender.imports = QStringLiteral("import Yardsticks 1.0");
    contender.background = QStringLiteral("QmlSource.background");
    contender.foreground = QStringLiteral("QmlSource.foreground");
    contender.corner = QStringLiteral("QmlSource.radius");
    contender.face = QStringLiteral("QmlSource.font");
    contender.show = [](int index, QObject *root) {
        static const int type = qmlTypeId("Yardsticks", 1, 0, "QmlSource");
        auto *source = qmlEngine(root)->singletonInstance<QObject *>(type);
        const Look &look = Look::at(index);
        source->setProperty("background", look.background);
        source->setProperty("foreground", look.foreground);
        source->setProperty("radius", look.radius);
        source->setProperty("font", look.font);
    };
    return contender;
}

Contender cppSingleton()
{
    Contender contender;
    contender.name = QStringLiteral("cpp-singleton");
    contender.imports = QStringLiteral("import Yardsticks 1.0");
    contender.background = QStringLiteral("LookSource.background");
    contender.foreground = QStringLiteral("LookSource.foreground");
    contender.corner = QStringLiteral("LookSource.radius");
    contender.face = QStringLiteral("LookSource.font");
    contender.show = [](int index, QObject *) { LookSource::instance()->show(Look::at(index)); };
    return contender;
}

Contender bareAttached()
{
    Contender contender = cppSingleton();
    contender.name = QStringLiteral("bare-attached");
    contender.background = QStringLiteral("Bare.background");
    contender.foreground = QStringLiteral("Bare.foreground");
    contender.corner = QStringLiteral("Bare.radius");
    contender.face = QStringLiteral("Bare.font");
    return contender;
}

Contender floorAttached()
{
    Contender contender;
    contender.name = QStringLiteral("floor");
    contender.imports = QStringLiteral("import Yardsticks 1.0");
    contender.background = QStringLiteral("Floor.colors.background");
    contender.foreground = QStringLiteral("Floor.colors.foreground");
    contender.corner = QStringLiteral("Floor.radius");
    contender.face = QStringLiteral("Floor.fonts.mainFont");
    contender.prepare = [](QQmlEngine *) { FloorData::instance()->show(Look::at(0)); };
    contender.show = [](int index, QObject *) { FloorData::instance()->show(Look::at(index)); };
    return contender;
}

Contender material()
{
    Contender contender;
    contender.name = QStringLiteral("material");
    contender.imports = QStringLiteral("import QtQuick.Controls.Material 2.15");
    contender.rootLines = QStringLiteral("Material.theme: Material.Light");
    contender.background = QStringLiteral("Material.background");
    contender.foreground = QStringLiteral("Material.foreground");
    contender.corner = QStringLiteral("Material.theme");
    contender.face = QStringLiteral("Material.accent");
    contender.faceType = QStringLiteral("color");
    contender.show = [](int index, QObject *root) {
        QQmlProperty(root, QStringLiteral("Material.theme"), qmlContext(root)).write(index);
    };
    contender.showsLooks = false;
    contender.isPeer = true;
    return contender;
}

Contender kirigami(const QString &name)
{
    Contender contender;
    contender.name = name;
    contender.imports = QStringLiteral("import org.kde.kirigami 2.16 as Kirigami");
    contender.background = QStringLiteral("Kirigami.Theme.backgroundColor");
    contender.foreground = QStringLiteral("Kirigami.Theme.textColor");
    contender.corner = QStringLiteral("Kirigami.Theme.highlightColor");
    contender.face = QStringLiteral("Kirigami.Theme.highlightedTextColor");
    contender.cornerType = contender.faceType = QStringLiteral("color");
    contender.showsLooks = false;
    contender.isPeer = true;
    return contender;
}

/// Colors written at the root, which all items inherit.
Contender kirigamiCustomColors()
{
    Contender contender = kirigami(QStringLiteral("kirigami"));
    contender.rootLines = QStringLiteral(
            "property color ground: '#f0f0f4'; property color line: '#202028'\n"
            "property color mark: '#1060c0'; property color text: '#ffffff'\n"
            "Kirigami.Theme.inherit: false\n"
            "Kirigami.Theme.backgroundColor: ground; Kirigami.Theme.textColor: line\n"
            "Kirigami.Theme.highlightColor: mark; Kirigami.Theme.highlightedTextColor: text");
    contender.show = [](int index, QObject *root) {
        const Look &look = Look::at(index);
        root->setProperty("ground", look.background);
        root->setProperty("line", look.foreground);
        root->setProperty("mark", look.accent);
        root->setProperty("text", look.foreground.darker());
    };
    return contender;
}

QPalette paletteOf(const Look &look)
{
    QPalette palette;
    palette.setColor(QPalette::Window, look.background);
    palette.setColor(QPalette::Base, look.background.lighter(110));
    palette.setColor(QPalette::WindowText, look.foreground);
    palette.setColor(QPalette::Text, look.foreground.lighter(110));
    palette.setColor(QPalette::Highlight, look.accent);
    palette.setColor(QPalette::HighlightedText, look.foreground.darker());
    return palette;
}

/// Every item resolves a color set of its own; the application's palette is switched.
Contender kirigamiOwnThemes()
{
    Contender contender = kirigami(QStringLiteral("kirigami-own"));
    contender.itemLines = QStringLiteral("Kirigami.Theme.inherit: false\n"
                                         "Kirigami.Theme.colorSet: Kirigami.Theme.View");
    // This style of Kirigami's takes its colors from the palette.
    contender.prepare = [](QQmlEngine *) {
        qputenv("KIRIGAMI_FORCE_STYLE", "org.kde.desktop");
        QGuiApplication::setPalette(paletteOf(Look::at(0)));
    };
    contender.show = [](int index, QObject *) {
        QGuiApplication::setPalette(paletteOf(Look::at(index)));
    };
    return contender;
}

Contender controlPalette()
{
    Contender contender;
    contender.name = QStringLiteral("control-palette");
    contender.imports = QStringLiteral("import QtQuick.Controls 2.15");
    contender.rootType = contender.itemType = QStringLiteral("Control");
    contender.background = QStringLiteral("palette.window");
    contender.foreground = QStringLiteral("palette.windowText");
    contender.corner = QStringLiteral("palette.highlight");
    contender.face = QStringLiteral("palette.highlightedText");
    contender.cornerType = contender.faceType = QStringLiteral("color");
    contender.show = [](int index, QObject *root) {
        const QPalette palette = paletteOf(Look::at(index));
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
        // An object with a property for each role.
        auto *roles = root->property("palette").value<QObject *>();
        roles->setProperty("window", palette.window().color());
        roles->setProperty("windowText", palette.windowText().color());
        roles->setProperty("highlight", palette.highlight().color());
        roles->setProperty("highlightedText", palette.highlightedText().color());
#else
        root->setProperty("palette", palette);
#endif
    };
    contender.showsLooks = false;
    contender.isPeer = true;
    return contender;
}

const ThemeFiles &lookFiles()
{
    static const ThemeFiles files;
    return files;
}

Contender tavolins(const QString &name, const QString &classnames)
{
    Contender contender;
    contender.name = name;
    contender.imports = QStringLiteral("import " TAVOLINS_QML_URI " 1.0");
    if (!classnames.isEmpty())
        contender.itemLines = QStringLiteral("Theme.classnames: \"%1\"").arg(classnames);
    contender.background = QStringLiteral("Theme.colors.background");
    contender.foreground = QStringLiteral("Theme.colors.foreground");
    contender.corner = QStringLiteral("Theme.radius");
    contender.face = QStringLiteral("Theme.fonts.mainFont");
    contender.prepare = [](QQmlEngine *) {
        lookFiles().writeLooks();
        ThemeManager::getInstance()->loadThemes(lookFiles().path(), ThemeFiles::lookTitle(0));
    };
    contender.show = [](int index, QObject *) {
        auto *manager = ThemeManager::getInstance();
        manager->setCurrent(manager->themeFromName(ThemeFiles::lookTitle(index)));
    };
    contender.rewrite = [](int index) { lookFiles().writeLook(0, index); };
    contender.reload = [] { ThemeManager::getInstance()->current()->reload(); };
    contender.showsLooks = classnames.isEmpty() || classnames == ThemeFiles::unknownClass();
    return contender;
}

std::vector<Contender> allContenders()
{
    const QString one = ThemeFiles::className(0);
    const QString two = one + QLatin1Char(' ') + ThemeFiles::className(1);
    return {
        plain(QStringLiteral("plain"), QStringLiteral("Rectangle")),
        qmlSingleton(),
        cppSingleton(),
        bareAttached(),
        floorAttached(),
        material(),
        kirigamiCustomColors(),
        kirigamiOwnThemes(),
        plain(QStringLiteral("plain-control"), QStringLiteral("Control")),
        controlPalette(),
        tavolins(QStringLiteral("tavolins"), QString()),
        tavolins(QStringLiteral("tavolins-one-class"), one),
        tavolins(QStringLiteral("tavolins-two-classes"), two),
        tavolins(QStringLiteral("tavolins-no-scope"), ThemeFiles::unknownClass()),
    };
}

const std::vector<Contender> &contenders()
{
    static const std::vector<Contender> all = allContenders();
    return all;
}

} // namespace

const Contender *Contender::named(const QString &name)
{
    for (const Contender &contender : contenders()) {
        if (contender.name == name)
            return &contender;
    }
    return nullptr;
}

QStringList Contender::names()
{
    QStringList names;
    for (const Contender &contender : contenders())
        names.append(contender.name);
    return names;
}
