#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// What the checker asks Qt's font database, which is an object in Qt 5 and a class in Qt 6.
namespace QtFonts {

bool hasFamily(const QString &family);

/// The names of the styles that \a family has.
QStringList styles(const QString &family);

bool isItalic(const QString &family, const QString &style);

/// The weight, as QFont has it, of a \a style of \a family; -1 if there is no such style.
int weight(const QString &family, const QString &style);

} // namespace QtFonts
