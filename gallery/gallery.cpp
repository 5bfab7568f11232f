#include "gallery/gallery.h"

#include "gallery/commandline.h"
#include "gallery/galleryview.h"
#include "gallery/surroundings.h"
#include "gallery/themefile.h"
#include "manager/thememanager.h"
#include "theme/theme.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QTextStream>
#include <QtGui/QGuiApplication>

namespace {

void print(const QString &text)
{
    QTextStream(stdout) << text << '\n';
}

ExitCode complain(ExitCode code, const QString &text)
{
    QTextStream(stderr) << "tavolins-gallery: " << text << '\n';
    return code;
}

QList<Theme *> cataloguedThemes()
{
    const ThemeManager *manager = ThemeManager::getInstance();
    const int pointerRole = manager->roleNames().key(QByteArrayLiteral("pointer"));
    QList<Theme *> themes;
    for (int row = 0; row < manager->rowCount(); ++row) {
        const QVariant pointer = manager->data(manager->index(row), pointerRole);
        themes.append(qobject_cast<Theme *>(pointer.value<QObject *>()));
    }
    return themes;
}

/// Why the theme file at \a path is not in the catalogue.
QString whyLeftOut(const QString &path)
{
    const ThemeFile file = ThemeFile::read(path);
    if (!file.problem.isEmpty())
        return file.problem;
    const QString title = file.extends();
    const Theme *extended = ThemeManager::getInstance()->themeFromName(title);
    if (!extended)
        return QStringLiteral("it extends \"%1\", which no theme that loaded is titled").arg(title);
    // Themes that wait are tried once more, in the order of their names.
    return QStringLiteral("it extends \"%1\", which loaded too late; rename the files so that %2 "
                          "comes first")
            .arg(title, QFileInfo(extended->filename()).fileName());
}

/// The names of the theme files in \a folder that are not in the catalogue.
QStringList themesLeftOut(const QDir &folder)
{
    QStringList loaded;
    const QList<Theme *> themes = cataloguedThemes();
    for (const Theme *theme : themes)
        loaded.append(theme->filename());
    QStringList leftOut;
    const QStringList names = folder.entryList({ QStringLiteral("*.thm") });
    for (const QString &name : names) {
        if (!loaded.contains(folder.absoluteFilePath(name)))
            leftOut.append(name);
    }
    return leftOut;
}

/// Fills the catalogue from \a path and makes the theme titled \a title, or the first one, current.
ExitCode loadThemes(const QString &path, const QString &title)
{
    const QDir folder(path);
    if (!folder.exists())
        return complain(NoThemes, QStringLiteral("there is no folder \"%1\"").arg(path));

    ThemeManager *manager = ThemeManager::getInstance();
    manager->loadThemes(folder.absolutePath());
    const QStringList leftOut = themesLeftOut(folder);
    for (const QString &name : leftOut)
        complain(NoThemes,
                 QStringLiteral("%1 is left out: %2")
                         .arg(name, whyLeftOut(folder.absoluteFilePath(name))));
    const QList<Theme *> themes = cataloguedThemes();
    if (themes.isEmpty())
        return complain(
                NoThemes,
                QStringLiteral("no theme in \"%1\"; themes are files named *.thm").arg(path));

    Theme *first = title.isEmpty() ? themes.first() : manager->themeFromName(title);
    if (!first)
        return complain(NoThemes,
                        QStringLiteral("no theme in \"%1\" is titled \"%2\"").arg(path, title));
    manager->setCurrent(first);
    return Success;
}

/// Writes the pictures into the folder \a path. A theme file of \a themeFolder that there is no
/// picture of makes it a failure, but keeps no other from being made.
ExitCode writePictures(GalleryView &view, const QString &themeFolder, const QString &path)
{
    if (!QDir().mkpath(path))
        return complain(Failed, QStringLiteral("can't create the folder \"%1\"").arg(path));
    const QDir folder(path);
    ExitCode result = themesLeftOut(QDir(themeFolder)).isEmpty() ? Success : Failed;
    const QList<Theme *> themes = cataloguedThemes();
    for (Theme *theme : themes) {
        // The catalogue takes text that can't be parsed for a theme without any values.
        const QString problem = ThemeFile::read(theme->filename()).problem;
        if (!problem.isEmpty()) {
            result = complain(Failed,
                              QStringLiteral("%1 can't be applied: %2")
                                      .arg(QFileInfo(theme->filename()).fileName(), problem));
            continue;
        }
        ThemeManager::getInstance()->setCurrent(theme);
        const QString name = QFileInfo(theme->filename()).completeBaseName();
        const QString file = folder.filePath(name + QLatin1String(".png"));
        if (!view.picture().save(file))
            return complain(Failed, QStringLiteral("can't write \"%1\"").arg(file));
        print(file);
    }
    return result;
}

} // namespace

int runGallery(int &argc, char *argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    CommandLine commandLine;
    const bool argumentsAreRight = commandLine.parse(arguments);
    const bool forPictures = !commandLine.shotFolder().isEmpty();
    const bool isVisible = Surroundings::choosePlatform(forPictures);

    QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tavolins-gallery"));
    QCoreApplication::setApplicationVersion(QStringLiteral(GALLERY_VERSION));
    if (!argumentsAreRight)
        return complain(Failed, commandLine.errorText());
    if (commandLine.helpWanted()) {
        print(commandLine.helpText());
        return Success;
    }
    if (commandLine.versionWanted()) {
        print(QStringLiteral("tavolins-gallery " GALLERY_VERSION));
        return Success;
    }

    const QString folder = commandLine.folder().isEmpty() ? Surroundings::bundledThemes()
                                                          : commandLine.folder();
    const ExitCode loaded = loadThemes(folder, commandLine.theme());
    if (loaded != Success)
        return loaded;
    if (!forPictures && !isVisible)
        return complain(Failed,
                        QStringLiteral("there is no display; --shot DIR writes pictures instead"));

    GalleryView view(Surroundings::importPath());
    if (view.status() != QQuickView::Ready)
        return complain(Failed, QStringLiteral("the QML module is not beside the executable"));
    if (forPictures)
        return writePictures(view, folder, commandLine.shotFolder());
    view.show();
    return QGuiApplication::exec();
}
