#pragma once

#include "fuzz/programs/programrun.h"

#include <QtCore/QSet>
#include <QtCore/QString>

/// Completes the environment: no display, nothing of the user's settings, and freed memory that is
/// overwritten, so that Qt itself, which is built without sanitizers, stumbles over objects that
/// were destroyed under its hands. Starts the program anew where that takes it, so call it first.
void prepareEnvironment(char *argv[]);

/// The exit code of a process whose program did not hold; those of sanitizers are others.
const int problemsFound = 3;

/// A seed for who has none.
quint64 anySeed();

/// Runs programs in processes of their own, which may crash, and tells of those that fail.
class Driver
{
public:
    /// What became of a process.
    struct Outcome
    {
        // What kind of failure it is; empty if there is none.
        QString failure;
        QString output;
        quint64 lastSeed = 0;
        int started = 0;
    };

    /// \param program this program's file, which the processes are started from.
    /// \param findings the folder that failing programs are written to.
    Driver(const QString &program, const QString &findings, Subject subject);

    /// Runs the program in the file \a path.
    Outcome runFile(const QString &path) const;

    /// Runs programs from the seed \a first on, for \a seconds or until one fails.
    /// \return whether none failed.
    bool fuzz(quint64 first, int seconds, bool keepsGoing) const;

    /// Prints the program of \a seed without all that its failure does not need.
    /// \return whether it fails.
    bool shrink(quint64 seed) const;

private:
    Outcome start(QStringList arguments) const;
    Outcome run(quint64 first, int count, const QSet<int> &dropped) const;
    QSet<int> needless(quint64 seed, const QString &failure) const;
    void report(quint64 seed, const Outcome &outcome) const;

    const QString m_program;
    const QString m_findings;
    const Subject m_subject;
};
