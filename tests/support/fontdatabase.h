#pragma once

#include <QtCore/QStringList>
#include <QtGui/QFontDatabase>

/// Qt's database of fonts, whose functions are static since Qt 6 and were members before.
namespace FontDatabase {

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
inline QStringList families()
{
    return QFontDatabase::families();
}

inline int weight(const QString &family, const QString &style)
{
    return QFontDatabase::weight(family, style);
}
#else
inline QStringList families()
{
    return QFontDatabase().families();
}

inline int weight(const QString &family, const QString &style)
{
    return QFontDatabase().weight(family, style);
}
#endif

} // namespace FontDatabase
