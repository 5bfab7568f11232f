#pragma once

class Theme;
class ThemePrivate;

/// Deletion of parentless objects that a running signal may still use.
///
/// Such objects are left to QObject::deleteLater(). When the application ends before an event loop
/// has come to them (an engine that is destroyed after exec() returned, for instance), they are
/// deleted as the library is unloaded, so that nothing leaks in any order of shutting down.
class DeferredDeletion
{
public:
    static void schedule(Theme *theme);
    static void schedule(ThemePrivate *data);
};
