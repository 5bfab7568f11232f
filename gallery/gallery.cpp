#include "gallery/gallery.h"

#include "checker/themefault.h"
#include "gallery/commandline.h"
#include "gallery/galleryview.h"
#include "gallery/pictures.h"
#include "gallery/surroundings.h"
#include "manager/thememanager.h"
#include "theme/theme.h"

#include <QtCore/QDir>
#include <QtCore/QTextStream>
#include <QtGui/QGuiApplication>

namespace {

void print(const QString &text)
{
    QTextStream(stdout) << text << '\n';
}

ExitCode complain(ExitCode code, const QString &text)
{
    QTextStream(stderr) << GALLERY_NAME ": " << text << '\n';
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

/// Tells which themes of the folder at \a path don't come to be, and why.
void complainOfFaults(const QString &path)
{
    const QVector<Problem> faults = themeFaults(path);
    for (const Problem &fault : faults) {
        if (fault.severity == Severity::Error)
            complain(Failed, lineOf(fault));
    }
}

/// Fills the catalogue from \a path and makes the theme titled \a title, or the first one, current.
ExitCode loadThemes(const QString &path, const QString &title)
{
    const QDir folder(path);
    if (!folder.exists())
        return complain(NoThemes, QStringLiteral("there is no folder \"%1\"").arg(path));

    ThemeManager *manager = ThemeManager::getInstance();
    manager->loadThemes(folder.absolutePath());
    const QList<Theme *> themes = cataloguedThemes();
    if (themes.isEmpty()) {
        complainOfFaults(path);
        return complain(
                NoThemes,
                QStringLiteral("no theme in \"%1\"; themes are files named *.thm").arg(path));
    }

    Theme *first = title.isEmpty() ? themes.first() : manager->themeFromName(title);
    if (!first)
        return complain(NoThemes,
                        QStringLiteral("no theme in \"%1\" is titled \"%2\"").arg(path, title));
    manager->setCurrent(first);
    return Success;
}

/// Prints the paths of pictures and complains of what went wrong.
class PrintingReport : public PictureReport
{
public:
    void begins(int, int, const QString &) override { }
    void wrote(const QString &path) override { print(path); }
    void failed(const QString &problem) override { complain(Failed, problem); }
};

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
    QCoreApplication::setApplicationName(QStringLiteral(GALLERY_NAME));
    QCoreApplication::setApplicationVersion(QStringLiteral(GALLERY_VERSION));
    if (!argumentsAreRight)
        return complain(Failed, commandLine.errorText());
    if (commandLine.helpWanted()) {
        print(commandLine.helpText());
        return Success;
    }
    if (commandLine.versionWanted()) {
        print(QStringLiteral(GALLERY_NAME " " GALLERY_VERSION));
        return Success;
    }

    const QString folder = commandLine.folder().isEmpty() ? Surroundings::bundledThemes()
                                                          : commandLine.folder();
    const ExitCode loaded = loadThemes(folder, commandLine.theme());
    if (loaded != Success)
        return loaded;
    if (forPictures) {
        PrintingReport report;
        return writePictures({ folder, commandLine.shotFolder(), QString(), QSize(), true },
                             &report)
                        == PictureResult::Written
                ? Success
                : Failed;
    }
    if (!isVisible)
        return complain(Failed,
                        QStringLiteral("there is no display; --shot DIR writes pictures instead"));
    complainOfFaults(folder);

    const QString importPath = Surroundings::importPath();
    GalleryView view(importPath, Surroundings::chooseControlsStyle(importPath));
    if (view.status() != QQuickView::Ready)
        return complain(Failed, QStringLiteral("the QML module is not beside the executable"));
    view.show();
    return QGuiApplication::exec();
}
