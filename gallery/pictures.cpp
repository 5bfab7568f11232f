#include "gallery/pictures.h"

#include "checker/document.h"
#include "checker/themefault.h"
#include "gallery/galleryview.h"
#include "gallery/surroundings.h"
#include "manager/thememanager.h"
#include "theme/theme.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QScopeGuard>
#include <QtCore/QVector>

namespace {

QVector<Theme *> cataloguedThemes()
{
    const ThemeManager *manager = ThemeManager::getInstance();
    const int pointerRole = manager->roleNames().key(QByteArrayLiteral("pointer"));
    QVector<Theme *> themes;
    for (int row = 0; row < manager->rowCount(); ++row) {
        const QVariant pointer = manager->data(manager->index(row), pointerRole);
        themes.append(qobject_cast<Theme *>(pointer.value<QObject *>()));
    }
    return themes;
}

/// The title that the file at \a path gives its theme.
QString titleOf(const QString &path)
{
    return Document::read(path).object().value(QLatin1String("title")).toString();
}

/// The themes of \a order that can be shown, in the order of the catalogue. Tells about those that
/// can't. \a isFound tells whether there are any of the one kind or the other.
QVector<Theme *> showableThemes(const PictureOrder &order, PictureReport *report, bool *isFound)
{
    const auto isOrdered = [&order](const QString &path) {
        return order.title.isEmpty() || titleOf(path) == order.title;
    };
    QStringList broken;
    const QVector<Problem> problems = themeFaults(order.themes);
    for (const Problem &problem : problems) {
        // What is hidden, say, is told as a note: it is no theme in the first place.
        if (problem.severity != Severity::Error || !isOrdered(problem.file))
            continue;
        report->failed(lineOf(problem));
        broken.append(QFileInfo(problem.file).absoluteFilePath());
    }
    *isFound = !broken.isEmpty();
    QVector<Theme *> themes;
    const QVector<Theme *> candidates = cataloguedThemes();
    for (Theme *theme : candidates) {
        if (!broken.contains(theme->filename()) && isOrdered(theme->filename()))
            themes.append(theme);
    }
    *isFound = *isFound || !themes.isEmpty();
    if (!*isFound)
        report->failed(QStringLiteral("no theme in \"%1\" is titled \"%2\"")
                               .arg(order.themes, order.title));
    return themes;
}

/// Counts what goes wrong on the way to another report.
class CountingReport : public PictureReport
{
public:
    explicit CountingReport(PictureReport *next)
        : m_next(next)
    {
    }

    void begins(int number, int count, const QString &name) override
    {
        m_next->begins(number, count, name);
    }
    void wrote(const QString &path) override { m_next->wrote(path); }
    void failed(const QString &problem) override
    {
        m_isWell = false;
        m_next->failed(problem);
    }

    bool isWell() const { return m_isWell; }

private:
    PictureReport *const m_next;
    bool m_isWell = true;
};

void writeAll(const PictureOrder &order, const QVector<Theme *> &themes, PictureReport *report)
{
    if (!QDir().mkpath(order.destination)) {
        report->failed(QStringLiteral("can't create the folder \"%1\"").arg(order.destination));
        return;
    }
    if (themes.isEmpty())
        return;
    ThemeManager::getInstance()->setCurrent(themes.first());
    const QString importPath = Surroundings::importPath();
    GalleryView view(importPath, Surroundings::chooseControlsStyle(importPath));
    if (view.status() != QQuickView::Ready) {
        report->failed(QStringLiteral("the QML module is not beside the executable"));
        return;
    }
    if (order.size.isValid())
        view.resize(order.size);
    const QDir destination(order.destination);
    const auto write = [&destination, report](const QImage &picture, const QString &name) {
        const QString file = destination.filePath(name + QLatin1String(".png"));
        const bool isWritten = picture.save(file);
        if (isWritten)
            report->wrote(file);
        else
            report->failed(QStringLiteral("can't write \"%1\"").arg(file));
        return isWritten;
    };
    // Qt's software renderer gives back the images that it has drawn when it draws again without
    // them, and not at its end.
    const auto emptying = qScopeGuard([&view] {
        view.setSource(QUrl());
        view.releaseResources();
        view.grabWindow();
    });
    for (int i = 0; i < themes.size(); ++i) {
        const QFileInfo source(themes.at(i)->filename());
        report->begins(i + 1, themes.size(), source.fileName());
        ThemeManager::getInstance()->setCurrent(themes.at(i));
        const QString name = source.completeBaseName();
        if (!write(view.picture(), name))
            return;
        if (order.hasControls && view.hasControls()
            && !write(view.controlsPicture(), name + QLatin1String("-controls")))
            return;
    }
}

} // namespace

PictureReport::~PictureReport() = default;

PictureResult writePictures(const PictureOrder &order, PictureReport *report)
{
    CountingReport counting(report);
    bool isFound = false;
    const QVector<Theme *> themes = showableThemes(order, &counting, &isFound);
    if (!isFound)
        return PictureResult::NoSuchTheme;
    writeAll(order, themes, &counting);
    return counting.isWell() ? PictureResult::Written : PictureResult::Incomplete;
}

QSize smallestPicture()
{
    return GalleryView::smallestSize();
}
