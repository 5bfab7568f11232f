#pragma once

#include "theme/theme.h"

/// Tells a function that emits signals whether its theme has outlived their handlers. Costs a few
/// instructions where a QPointer allocates, which counts for functions that run for every item at
/// every switch.
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
        if (m_theme)
            m_theme->m_lifeWatch = m_outer;
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
