#pragma once

#include <QtCore/QString>

/// Weights of fonts, which Qt 5 and Qt 6 number differently, told alike with both.
namespace FontWeight {

/// \a weight, as QFont has it, on the scale of Qt 6, CSS and font files: 1 to 1000, where 400 is
/// Normal and 700 Bold.
int number(int weight);

/// The name that QFont has for \a weight, as in "Bold"; empty if it has none.
QString name(int weight);

/// \a weight for people: its name, or the nearest one and the number.
QString text(int weight);

} // namespace FontWeight
