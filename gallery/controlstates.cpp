#include "gallery/controlstates.h"

#include "gallery/galleryview.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QHoverEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtQuick/QQuickItem>

namespace {

/// The controls below \a item that are to show the state named \a state.
QList<QQuickItem *> samples(QQuickItem *item, const char *state)
{
    if (item->property("stateShown").toString() == QLatin1String(state)) {
        auto *sample = item->property("item").value<QQuickItem *>();
        return sample ? QList<QQuickItem *>{ sample } : QList<QQuickItem *>();
    }
    QList<QQuickItem *> found;
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *child : children)
        found.append(samples(child, state));
    return found;
}

QPointF center(const QQuickItem *item)
{
    return QPointF(item->width() / 2, item->height() / 2);
}

} // namespace

void ControlStates::show(QQuickItem *page)
{
    const QList<QQuickItem *> hovered = samples(page, "Hovered");
    for (QQuickItem *sample : hovered) {
        const QPointF outside(-1, -1);
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
        QHoverEvent enter(QEvent::HoverEnter, center(sample), center(sample), outside);
#else
        QHoverEvent enter(QEvent::HoverEnter, center(sample), outside);
#endif
        QCoreApplication::sendEvent(sample, &enter);
    }
    const QList<QQuickItem *> pressed = samples(page, "Pressed");
    for (QQuickItem *sample : pressed) {
        // Buttons are held down by the page: pressing one may start something.
        if (sample->property("down").isValid())
            continue;
        const QPointF where = center(sample);
        QMouseEvent press(QEvent::MouseButtonPress, where, where, where, Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(sample, &press);
    }
    samples(page, "Focused").constFirst()->forceActiveFocus(Qt::TabFocusReason);
}

void ControlStates::drawFocused(QQuickItem *page, QImage &picture)
{
    QPainter painter(&picture);
    const QList<QQuickItem *> focused = samples(page, "Focused");
    for (QQuickItem *sample : focused) {
        sample->forceActiveFocus(Qt::TabFocusReason);
        QQuickItem *cell = sample->parentItem()->parentItem();
        painter.drawImage(cell->mapToScene(QPointF()), GalleryView::pictureOf(*cell));
    }
    // The next picture begins like this one.
    focused.first()->forceActiveFocus(Qt::TabFocusReason);
}
