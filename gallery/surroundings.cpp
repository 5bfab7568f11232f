#include "gallery/surroundings.h"

#include "checker/runtimefolder.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtQuick/QQuickWindow>

namespace {

struct Place
{
    const char *folder;
    const char *installedFolder;
    /// What has to be in there.
    const char *content;
};

const Place module = { "../qml", GALLERY_INSTALLED_QML_DIR, GALLERY_MODULE_DIR "/qmldir" };
const Place themes = { "../themes", GALLERY_INSTALLED_THEMES_DIR, "." };

QString find(const Place &place)
{
    const QDir here(QCoreApplication::applicationDirPath());
    const QString built = here.absoluteFilePath(QLatin1String(place.folder));
    const QString content = built + QLatin1Char('/') + QLatin1String(place.content);
    if (QFileInfo::exists(content))
        return QDir::cleanPath(built);
    return QDir::cleanPath(here.absoluteFilePath(QLatin1String(place.installedFolder)));
}

bool hasDisplay()
{
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    return !qEnvironmentVariableIsEmpty("DISPLAY")
            || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
#else
    return true;
#endif
}

} // namespace

bool Surroundings::choosePlatform(bool forPictures)
{
    // Flat shapes and text only: this renderer draws them alike on every machine, and can't fail
    // for want of a graphics driver.
    if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND"))
        QQuickWindow::setSceneGraphBackend(QStringLiteral("software"));
    ensureRuntimeFolder();

    if (!qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        return true;
    if (!forPictures && hasDisplay())
        return true;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    return false;
}

QString Surroundings::importPath()
{
    return find(module);
}

bool Surroundings::chooseControlsStyle(const QString &importPath)
{
    const QFileInfo style(importPath + QLatin1String("/" GALLERY_CONTROLS_DIR));
    if (!QFileInfo::exists(style.filePath() + QLatin1String("/Button.qml")))
        return false;
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    qputenv("QT_QUICK_CONTROLS_STYLE", "Tavolins");
#else
    // Qt 5 does not ask the engine where styles are.
    qputenv("QT_QUICK_CONTROLS_STYLE", QFile::encodeName(style.filePath()));
#endif
    return true;
}

QString Surroundings::bundledThemes()
{
    return find(themes);
}
