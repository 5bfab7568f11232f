#pragma once

#include <QtCore/QSize>
#include <QtGui/QImage>

class QQuickItem;

/// Brings the samples of the page of controls into the states that mouse and keyboard make. All of
/// them are to be seen at once, so no real mouse could do it.
namespace ControlStates {

/// Puts the samples below \a page under a mouse that hovers or presses, and the keyboard's focus on
/// the first of those that show it.
void show(QQuickItem *page);

/// Draws each sample below \a page that shows the keyboard's focus over \a picture, which is one of
/// the whole window, as it looks while it has the focus: only one at a time can have it.
void drawFocused(QQuickItem *page, QImage &picture);

} // namespace ControlStates
