#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// What came of a program that was run to its end.
struct ProgramRun
{
    /// -1 when it did not start, crashed or went on for more than a minute.
    int exitCode;
    QString output;
    QString errors;
};

/// The words of \a line, as arguments.
QStringList words(const char *line);

/// Whether a program can be run on a terminal of its own, by `script`; if not, \a why says what is
/// missing.
bool hasTerminals(QString *why);

/// Runs \a program with \a arguments in \a folder, as on a machine without a display, in which
/// nothing is prepared for it.
ProgramRun runProgram(const QString &program, const QStringList &arguments, const QString &folder);
