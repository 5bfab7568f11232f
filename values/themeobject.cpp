#include "values/themeobject.h"

ThemeObject::ThemeObject(QObject *parent)
    : QObject(parent)
{
}

ThemeObject::~ThemeObject() = default;
