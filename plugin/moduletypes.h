#pragma once

// What the plugin registers, in the form that Qt 6's qmltyperegistrar reads. Only plugins.qmltypes
// is made from it: the registration that counts is in TavolinsPlugin, which every Qt understands.

#include "manager/thememanager.h"
#include "theme/theme.h"
#include "values/themeobject.h"
#include "values/themeobjectcolors.h"
#include "values/themeobjectfonts.h"

#include <QtQml/qqmlregistration.h>

struct DescribedTheme
{
    Q_GADGET
    QML_FOREIGN(Theme)
    QML_NAMED_ELEMENT(Theme)
    QML_ATTACHED(Theme)
    QML_UNCREATABLE("Theme is an attached property")
};

struct DescribedThemeManager
{
    Q_GADGET
    QML_FOREIGN(ThemeManager)
    QML_NAMED_ELEMENT(ThemeManager)
    QML_SINGLETON
};

struct DescribedThemeObject
{
    Q_GADGET
    QML_FOREIGN(ThemeObject)
    QML_ANONYMOUS
};

struct DescribedThemeObjectColors
{
    Q_GADGET
    QML_FOREIGN(ThemeObjectColors)
    QML_ANONYMOUS
};

struct DescribedThemeObjectFonts
{
    Q_GADGET
    QML_FOREIGN(ThemeObjectFonts)
    QML_ANONYMOUS
};
