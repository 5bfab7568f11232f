#pragma once

#include "theme/theme.h"

#include <QtCore/QJsonObject>
#include <QtCore/QString>

/// A theme built the way the catalogue builds it, that leaves nothing behind when it goes.
///
/// The plugin's catalogue only grows and its themes release their data through the event loop, so a
/// program that reads thousands of themes, again and again, can use neither as it is.
class ScratchTheme
{
public:
    /// Reads a \a document as Theme::reload() does, over the data of \a parent, which may be null.
    /// \a path is where the document comes from. Font files beside it are not registered.
    ScratchTheme(const QString &path, const QJsonObject &document, const ScratchTheme *parent);
    ~ScratchTheme();

    ScratchTheme(const ScratchTheme &) = delete;
    ScratchTheme &operator=(const ScratchTheme &) = delete;

    Theme &theme() { return *m_theme; }
    /// The values without any class.
    const ThemePrivate &data() const { return *m_data; }

private:
    Theme *m_theme;
    ThemePrivate *m_data;
};
