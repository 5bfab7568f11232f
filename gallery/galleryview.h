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
    explicit GalleryView(const QString &importPath);
    ~GalleryView() override;

    /// The size below which parts of the window are cut.
    static QSize smallestSize();

    /// The window as it looks now. Shows it when it is hidden.
    QImage picture();

private:
    CurrentTheme m_currentTheme;
};
