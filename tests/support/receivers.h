#pragma once

#include <QtCore/QObject>

/// How many receivers the signal \a signal of \a object has, written with SIGNAL(). QObject tells
/// only its subclasses.
inline int receiverCount(const QObject *object, const char *signal)
{
    struct Receivers : QObject
    {
        using QObject::receivers;
    };
    int (QObject::*const count)(const char *) const = &Receivers::receivers;
    return (object->*count)(signal);
}
