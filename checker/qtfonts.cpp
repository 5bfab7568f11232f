#include "checker/qtfonts.h"

#include <QtGui/QFontDatabase>

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
#define DATABASE QFontDatabase::
#else
#define DATABASE QFontDatabase().
#endif

bool QtFonts::hasFamily(const QString &family)
{
    return DATABASE hasFamily(family);
}

QStringList QtFonts::styles(const QString &family)
{
    return DATABASE styles(family);
}

bool QtFonts::isItalic(const QString &family, const QString &style)
{
    return DATABASE italic(family, style);
}

int QtFonts::weight(const QString &family, const QString &style)
{
    return DATABASE weight(family, style);
}
