#include "gallery/galleryview.h"

#include "gallery/controlstates.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtCore/QtMath>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickItemGrabResult>

namespace {

const QSize usualSize(1280, 740);

// Items that were laid out anew may change the room that others have.
const int layoutPasses = 3;

// Longer than a pause between two steps of an animation.
const int restMilliseconds = 50;

} // namespace

// The resources of a static library have to be asked for, outside of any namespace.
static void initResources()
{
    Q_INIT_RESOURCE(gallery);
}

GalleryView::GalleryView(const QString &importPath, bool hasControls)
    : m_hasControls(hasControls)
{
    initResources();
    setTitle(QStringLiteral("Tavolins gallery"));
    setResizeMode(QQuickView::SizeRootObjectToView);
    setMinimumSize(smallestSize());
    resize(usualSize);
    engine()->addImportPath(importPath);
    setInitialProperties(
            { { QStringLiteral("currentTheme"), QVariant::fromValue<QObject *>(&m_currentTheme) },
              { QStringLiteral("hasControls"), hasControls } });
    setSource(QUrl(QStringLiteral("qrc:/gallery/Main.qml")));
    if (status() == Ready)
        // Not before the page is made: it is, while the property changes.
        connect(rootObject(),
                SIGNAL(showsControlsChanged()), this, SLOT(showStates()), Qt::QueuedConnection);
}

GalleryView::~GalleryView()
{
    // The items go first: their bindings read what the window's other members say.
    setSource(QUrl());
}

QSize GalleryView::smallestSize()
{
    return { 900, 640 };
}

QImage GalleryView::picture()
{
    rootObject()->setProperty("isPicture", true);
    show();
    layOut();
    QImage picture = pictureOf(*contentItem());
    rootObject()->setProperty("isPicture", false);
    return picture;
}

QImage GalleryView::controlsPicture()
{
    QQuickItem *root = rootObject();
    root->setProperty("isPicture", true);
    root->setProperty("isControlsPicture", true);
    root->setProperty("showsControls", true);
    show();
    layOut();
    auto *page = root->property("controls").value<QQuickItem *>();
    const QSize usual = size();
    const qreal above = page->mapToScene(QPointF()).y();
    resize(usual.width(), qCeil(above + page->property("wholeHeight").toReal()));

    // What moves when a control is checked, or the window changes its size, comes to rest.
    QImage picture;
    QImage before;
    do {
        before = picture;
        QEventLoop pause;
        QTimer timer;
        connect(&timer, &QTimer::timeout, &pause, &QEventLoop::quit);
        timer.start(restMilliseconds);
        pause.exec();
        layOut();
        picture = pictureOf(*contentItem());
    } while (picture != before);
    ControlStates::drawFocused(page, picture);

    root->setProperty("showsControls", false);
    root->setProperty("isControlsPicture", false);
    root->setProperty("isPicture", false);
    resize(usual);
    return picture;
}

bool GalleryView::hasControls() const
{
    return m_hasControls;
}

QImage GalleryView::pictureOf(QQuickItem &item)
{
    // Not grabWindow(): that reads back what the platform holds, and the one without a display
    // can't tell.
    const QSharedPointer<QQuickItemGrabResult> result = item.grabToImage();
    QEventLoop waiting;
    connect(result.data(), &QQuickItemGrabResult::ready, &waiting, &QEventLoop::quit);
    waiting.exec();
    return result->image();
}

void GalleryView::showStates()
{
    auto *page = rootObject()->property("controls").value<QQuickItem *>();
    if (page && page->isVisible())
        ControlStates::show(page);
}

void GalleryView::layOut()
{
    for (int pass = 0; pass < layoutPasses; ++pass) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}
