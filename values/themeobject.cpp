#include "values/themeobject.h"

#include "values/runningcall.h"

ThemeObject::ThemeObject(QObject *parent)
    : QObject(parent)
{
}

ThemeObject::~ThemeObject()
{
    RunningCall::forget(m_calls);
}

/// Loads the group's member of \a scope, if there is one.
void ThemeObject::loadMember(const QJsonObject &scope, bool deriveMissing)
{
    QJsonObject object = scope.value(groupName).toObject();
    if (!object.isEmpty())
        load(object, deriveMissing);
}
