#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtGui/QColor>

/// The text of a complete theme to begin with: all colors, fonts and the radius, and the classes
/// that the bundled themes have. Every text in it is readable, see Palette.
///
/// \param background, accent opaque colors; the accent is the background of the class "primary" and
/// gives the other colors their touch.
QByteArray starterTheme(const QString &title, const QColor &background, const QColor &accent);
