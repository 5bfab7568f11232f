#pragma once

#include <QtCore/QCommandLineParser>

/// The terminal that standard output is, if it is one.
namespace Terminal {

/// `--color auto|always|never`.
QCommandLineOption colorOption();

/// What is wrong with \a choice as a value of that option; empty if nothing is.
QString colorProblem(const QString &choice);

/// Whether what is printed should have colors, by the \a choice that the option makes.
bool wantsColors(const QString &choice);

/// Whether someone looks at standard output.
bool isPresent();

/// Has the standard streams that are closed refuse what is read from them or written to them. The
/// next files that are opened would take their places otherwise, and be printed into.
void occupyStandardStreams();

/// Whether someone looks at standard error.
bool isPresentForErrors();

} // namespace Terminal
