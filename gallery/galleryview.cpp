#include "gallery/galleryview.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QEventLoop>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickItemGrabResult>

namespace {

const QSize usualSize(1280, 740);

// Items that were laid out anew may change the room that others have.
const int layoutPasses = 3;

} // namespace

// The resources of a static library have to be asked for, outside of any namespace.
static void initResources()
{
    Q_INIT_RESOURCE(gallery);
}

GalleryView::GalleryView(const QString &importPath)
{
    initResources();
    setTitle(QStringLiteral("Tavolins gallery"));
    setResizeMode(QQuickView::SizeRootObjectToView);
    setMinimumSize(smallestSize());
    resize(usualSize);
    engine()->addImportPath(importPath);
    setInitialProperties({ { QStringLiteral("currentTheme"),
                             QVariant::fromValue<QObject *>(&m_currentTheme) } });
    setSource(QUrl(QStringLiteral("qrc:/gallery/Main.qml")));
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
    show();
    for (int pass = 0; pass < layoutPasses; ++pass) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    // Not grabWindow(): that reads back what the platform holds, and the one without a display
    // can't tell.
    const QSharedPointer<QQuickItemGrabResult> result = rootObject()->grabToImage();
    QEventLoop waiting;
    connect(result.data(), &QQuickItemGrabResult::ready, &waiting, &QEventLoop::quit);
    waiting.exec();
    return result->image();
}
