#pragma once

#include "theme/deferreddeletion.h"
#include "theme/theme.h"

/// Tells a function that emits signals whether its theme has outlived their handlers. Costs a few
/// instructions where a QPointer allocates, which counts for functions that run for every item at
/// every switch.
///
/// A theme whose item has died is kept as long as somebody watches it: the engine still uses the
/// sender of a signal after a handler in QML has returned, also when that handler ran an event
/// loop.
class Theme::LifeWatch
{
public:
    explicit LifeWatch(Theme *theme)
        : m_theme(theme)
        , m_outer(theme->m_lifeWatch)
    {
        theme->m_lifeWatch = this;
    }

    ~LifeWatch()
    {
        if (!m_theme)
            return;
        m_theme->m_lifeWatch = m_outer;
        if (m_theme->m_isReleased && !m_outer)
            DeferredDeletion::schedule(m_theme);
    }

    LifeWatch(const LifeWatch &) = delete;
    LifeWatch &operator=(const LifeWatch &) = delete;

    bool isAlive() const { return m_theme; }

    /// To be called by the destructor of \a theme.
    static void end(Theme *theme)
    {
        for (LifeWatch *watch = theme->m_lifeWatch; watch; watch = watch->m_outer)
            watch->m_theme = nullptr;
    }

private:
    Theme *m_theme;
    LifeWatch *const m_outer;
};
