#pragma once

#include <QtCore/QCommandLineParser>

/// The terminal that standard output is, if it is one.
namespace Terminal {

/// `--color auto|always|never`.
QCommandLineOption colorOption();

/// Whether \a choice is a value of that option.
bool isColorChoice(const QString &choice);

/// Whether what is printed should have colors, by the \a choice that the option makes.
bool wantsColors(const QString &choice);

/// Whether someone looks at standard output.
bool isPresent();

/// Whether someone looks at standard error.
bool isPresentForErrors();

} // namespace Terminal
