#pragma once

#include "theme/theme.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>

/// Tells an attached theme of the end of its item: a child of the item that dies with it.
///
/// An application may well call disconnect() on its objects, so a connection is no way to learn of
/// their end; a child takes less memory, too.
class Theme::ItemWatch : public QObject
{
public:
    ItemWatch(QObject *item, Theme *theme)
        : QObject(item)
        , m_item(item)
        , m_theme(theme)
    {
    }

    ~ItemWatch() override
    {
        if (!m_theme)
            return;
        m_theme->m_itemWatch = nullptr;
        // Guarded pointers to an object are null while it deletes its children. Else somebody has
        // deleted the children of a living item.
        if (!m_item)
            m_theme->release();
        else
            QObject::connect(m_item, &QObject::destroyed, m_theme, &Theme::release);
    }

    /// To be called by the destructor of \a theme.
    static void end(Theme *theme)
    {
        if (!theme->m_itemWatch)
            return;
        theme->m_itemWatch->m_theme = nullptr;
        delete theme->m_itemWatch;
    }

private:
    const QPointer<QObject> m_item;
    Theme *m_theme;
};
