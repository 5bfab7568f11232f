#include "phase.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>

#include <valgrind/callgrind.h>

Phase::Phase(const char *name)
    : m_name(name)
{
}

void Phase::begin()
{
    CALLGRIND_START_INSTRUMENTATION;
    m_timer.start();
}

void Phase::end()
{
    m_nanoseconds += m_timer.nsecsElapsed();
    CALLGRIND_STOP_INSTRUMENTATION;
}

double Phase::finish()
{
    CALLGRIND_DUMP_STATS_AT(m_name);
    return double(m_nanoseconds);
}

void settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
