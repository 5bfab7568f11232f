#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// A font of the system, changed so that no system has it.
namespace TestFont {

/// The family of content().
QString family();

/// A font file whose regular style is called "Book": DejaVu Sans under another family name. Empty
/// if DejaVu Sans is not installed.
QByteArray content();

} // namespace TestFont
