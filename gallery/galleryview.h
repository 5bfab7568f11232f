#pragma once

#include "gallery/currenttheme.h"

#include <QtGui/QImage>
#include <QtQuick/QQuickView>

/// The gallery's window. It shows the catalogue's themes and switches between them.
class GalleryView : public QQuickView
{
    Q_OBJECT

public:
    /// \param importPath where the engine finds the QML module
    /// \param hasControls whether the style for Qt Quick Controls is there to be shown
    explicit GalleryView(const QString &importPath, bool hasControls = false);
    ~GalleryView() override;

    /// The size below which parts of the window are cut.
    static QSize smallestSize();

    /// The window as it looks now. Shows it when it is hidden.
    QImage picture();

    /// The whole page of controls in their states, however high it is, with nothing that moves. The
    /// window is left on its first page.
    QImage controlsPicture();

    bool hasControls() const;

    /// What is seen of \a item, and of nothing else, at this moment.
    static QImage pictureOf(QQuickItem &item);

private Q_SLOTS:
    void showStates();

private:
    void layOut();

    bool m_hasControls;
    CurrentTheme m_currentTheme;
};
