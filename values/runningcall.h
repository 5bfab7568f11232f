#pragma once

#include <QtCore/qglobal.h>

/// A running call of a function that emits signals, as the function sees it: whether a handler has
/// ended its object, or has made a later call that took this one's place.
///
/// The object keeps its innermost running call in a member, null while there is none, and calls
/// forget() in its destructor. That costs a few instructions where a QPointer allocates, which
/// counts for functions that run for every item at every switch.
///
/// An object with running calls is in use: the engine goes on using the sender of a signal after a
/// handler in QML has returned, also when that handler ran an event loop. Whoever deletes such
/// objects waits until the last call has returned.
class RunningCall
{
public:
    explicit RunningCall(RunningCall *&innermost)
        : m_innermost(&innermost)
        , m_outer(innermost)
    {
        // Taken out again by the destructor, before this call's frame is gone.
#if defined(Q_CC_GNU) && !defined(Q_CC_CLANG) && Q_CC_GNU >= 1200
        QT_WARNING_PUSH
        QT_WARNING_DISABLE_GCC("-Wdangling-pointer")
        innermost = this;
        QT_WARNING_POP
#else
        innermost = this;
#endif
    }

    ~RunningCall()
    {
        if (m_innermost)
            *m_innermost = m_outer;
        if (!m_outer && s_whenReturned)
            s_whenReturned();
    }

    RunningCall(const RunningCall &) = delete;
    RunningCall &operator=(const RunningCall &) = delete;

    /// Whether the object still stands for anything: it is neither destroyed nor ended.
    bool isAlive() const
    {
        return m_state != Ended;
    }

    /// Whether this call is also still the one that decides.
    bool isCurrent() const
    {
        return m_state == Current;
    }

    /// A call begins that takes the place of those running, \a innermost and all around it.
    static void supersede(RunningCall *innermost)
    {
        for (RunningCall *call = innermost; call; call = call->m_outer) {
            if (call->m_state == Current)
                call->m_state = Superseded;
        }
    }

    /// The object ends, but stays in memory until its calls have returned.
    static void end(RunningCall *innermost)
    {
        for (RunningCall *call = innermost; call; call = call->m_outer)
            call->m_state = Ended;
    }

    /// The object is destroyed.
    static void forget(RunningCall *innermost)
    {
        end(innermost);
        for (RunningCall *call = innermost; call; call = call->m_outer)
            call->m_innermost = nullptr;
    }

    /// Has \a function called whenever the last call of an object has returned; null for none.
    static void whenReturned(void (*function)())
    {
        s_whenReturned = function;
    }

private:
    enum State { Current, Superseded, Ended };

    RunningCall **m_innermost;
    RunningCall *const m_outer;
    State m_state = Current;

    inline static void (*s_whenReturned)() = nullptr;
};
