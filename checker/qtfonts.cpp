#include "checker/fontdatabase.h"

#include <QtGui/QFontDatabase>

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
#define DATABASE QFontDatabase::
#else
#define DATABASE QFontDatabase().
#endif

bool FontDatabase::hasFamily(const QString &family)
{
    return DATABASE hasFamily(family);
}

QStringList FontDatabase::styles(const QString &family)
{
    return DATABASE styles(family);
}

bool FontDatabase::isItalic(const QString &family, const QString &style)
{
    return DATABASE italic(family, style);
}

int FontDatabase::weight(const QString &family, const QString &style)
{
    return DATABASE weight(family, style);
}
