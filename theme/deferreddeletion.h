#pragma once

class Theme;
class ThemePrivate;

/// Deletion of objects that a running signal, or a binding that is being evaluated, may still use.
///
/// The event loop deletes them when it is next where they were scheduled, like
/// QObject::deleteLater(), but all of one turn with a single event: Qt searches its events for each
/// object that is deleted, so an event for each of thousands of objects takes quadratic time. An
/// object whose functions are running then is deleted after they have returned.
///
/// When the application ends before an event loop has come to them (an engine that is destroyed
/// after exec() returned, for instance), they are deleted as the library is unloaded, so that
/// nothing leaks in any order of shutting down.
class DeferredDeletion
{
public:
    /// Scheduling an object a second time changes nothing.
    static void schedule(Theme *theme);
    static void schedule(ThemePrivate *data);

private:
    class Batch;
    struct Queue;

    template <typename Object>
    static void add(Object *object);
    static void scheduleKept();
    static Queue &queue();
};
