#pragma once

#include <QtCore/QElapsedTimer>

/// One measured phase. Under callgrind only what runs between begin() and end() is counted, and
/// finish() writes the count out under the phase's name; otherwise the time is taken.
class Phase
{
public:
    explicit Phase(const char *name);

    void begin();
    void end();

    /// Ends the phase's count. \return the time between begin() and end() in nanoseconds, all
    /// pairs of them added up.
    double finish();

private:
    const char *m_name;
    QElapsedTimer m_timer;
    qint64 m_nanoseconds = 0;
};

/// To be alive where many short phases follow each other. Each time that callgrind's
/// instrumentation is turned on, all code is translated anew, which takes far longer than they; so
/// it stays on, and each phase's finish() has to follow its end() at once.
class ManyPhases
{
public:
    ManyPhases();
    ~ManyPhases();

    ManyPhases(const ManyPhases &) = delete;
    ManyPhases &operator=(const ManyPhases &) = delete;
};

/// What an application's event loop would do now: pending events, then deferred deletions.
void settle();
