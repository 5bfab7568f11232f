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

/// Runs \a program with \a arguments in \a folder, as on a machine without a display, in which
/// nothing is prepared for it.
ProgramRun runProgram(const QString &program, const QStringList &arguments, const QString &folder);
