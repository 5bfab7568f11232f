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

/// What an application's event loop would do now: pending events, then deferred deletions.
void settle();
