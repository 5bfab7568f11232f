#include "phase.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>

#include <valgrind/callgrind.h>

namespace {

bool staysInstrumented = false;

} // namespace

ManyPhases::ManyPhases()
{
    staysInstrumented = true;
    CALLGRIND_START_INSTRUMENTATION;
}

ManyPhases::~ManyPhases()
{
    CALLGRIND_STOP_INSTRUMENTATION;
    staysInstrumented = false;
}

Phase::Phase(const char *name)
    : m_name(name)
{
}

void Phase::begin()
{
    if (staysInstrumented)
        CALLGRIND_ZERO_STATS;
    else
        CALLGRIND_START_INSTRUMENTATION;
    m_timer.start();
}

void Phase::end()
{
    m_nanoseconds += m_timer.nsecsElapsed();
    if (!staysInstrumented)
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
