#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// The text of a theme file with a title and a radius, and \a more members behind them.
inline QByteArray themeText(const QString &title, int radius, const QByteArray &more = QByteArray())
{
    return "{\"title\": \"" + title.toUtf8() + "\", \"global\": {\"radius\": "
            + QByteArray::number(radius) + "}" + (more.isEmpty() ? "" : ", ") + more + "}";
}

/// The text of a theme file whose "global" scope also sets the color of texts.
inline QByteArray coloredThemeText(const QString &title, int radius, const QByteArray &foreground,
                                   const QByteArray &more = QByteArray())
{
    return "{\"title\": \"" + title.toUtf8() + "\", \"global\": {\"radius\": "
            + QByteArray::number(radius) + ", \"colors\": {\"foreground\": \"" + foreground + "\"}}"
            + (more.isEmpty() ? "" : ", ") + more + "}";
}

/// A title no other test of this process uses: the catalogue of the process only grows.
inline QString uniqueTitle(const char *name)
{
    static int count = 0;
    return QLatin1String(name) + QLatin1Char('-') + QString::number(++count);
}
