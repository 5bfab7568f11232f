#pragma once

#include <QtCore/QObject>

/// Deletion of parentless objects that a running signal may still use.
///
/// Such objects are left to QObject::deleteLater(). When the application ends before an event loop
/// has come to them (an engine that is destroyed after exec() returned, for instance), they are
/// deleted as the library is unloaded, so that nothing leaks in any order of shutting down.
class DeferredDeletion
{
public:
    /// Has \a object deleted by the event loop, or at the latest when the library is unloaded.
    static void schedule(QObject *object);

    /// Must be called by the destructor of each object that may have been scheduled.
    static void forget(QObject *object);
};
