#include "theme/deferreddeletion.h"

#include <QtCore/QGlobalStatic>
#include <QtCore/QSet>

namespace {

struct PendingObjects
{
    ~PendingObjects()
    {
        // An object may schedule others while it is destroyed.
        while (!objects.isEmpty())
            delete *objects.constBegin();
    }

    QSet<QObject *> objects;
};

Q_GLOBAL_STATIC(PendingObjects, pending)

} // namespace

void DeferredDeletion::schedule(QObject *object)
{
    if (pending.isDestroyed()) {
        delete object;
        return;
    }
    pending->objects.insert(object);
    object->deleteLater();
}

void DeferredDeletion::forget(QObject *object)
{
    if (pending.exists())
        pending->objects.remove(object);
}
