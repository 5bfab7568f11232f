#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

/// A word behind `tavolins` with what it does.
struct Subcommand
{
    QString name;
    /// One line for the list of subcommands.
    QString summary;
    /// Takes the arguments behind the name, returns the exit code. There is an application then,
    /// without a display.
    int (*run)(const QStringList &arguments);
};

/// The one table of all subcommands.
const QVector<Subcommand> &subcommands();

int runCheck(const QStringList &arguments);
int runExplain(const QStringList &arguments);
int runDiff(const QStringList &arguments);
int runNew(const QStringList &arguments);
int runSchema(const QStringList &arguments);
int runShot(const QStringList &arguments);
int runShow(const QStringList &arguments);

/// Runs what \a arguments, the first of which is the program, ask for. \return the exit code.
int runTool(const QStringList &arguments);
