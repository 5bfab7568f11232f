#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>

class Theme;
class ThemePrivate;

/// The data that \a theme shows: its own, or that of its overloaded theme.
ThemePrivate *dataOf(const Theme &theme);

/// The object that \a text holds. Ends the process if that is no JSON object.
QJsonObject parsed(const QByteArray &text);
