#include "support/objectcount.h"

#include <QtCore/QObject>

#include <atomic>

// Qt's entry points for object inspectors; declared by a header that only Qt's private packages
// bring along.
extern quintptr Q_CORE_EXPORT qtHookData[];

namespace {

const int addObjectHook = 3;
const int removeObjectHook = 4;

std::atomic<int> liveObjects{ 0 };

void objectAdded(QObject *)
{
    ++liveObjects;
}

void objectRemoved(QObject *)
{
    --liveObjects;
}

} // namespace

ObjectCount::ObjectCount()
{
    liveObjects = 0;
    qtHookData[addObjectHook] = reinterpret_cast<quintptr>(&objectAdded);
    qtHookData[removeObjectHook] = reinterpret_cast<quintptr>(&objectRemoved);
}

ObjectCount::~ObjectCount()
{
    qtHookData[addObjectHook] = 0;
    qtHookData[removeObjectHook] = 0;
}

int ObjectCount::value() const
{
    return liveObjects;
}
