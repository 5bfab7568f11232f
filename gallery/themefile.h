#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QString>

/// The text of a theme file as its author sees it, and what is wrong with it.
struct ThemeFile
{
    QJsonObject object;
    /// Why the file can't be applied, in a sentence for its author; empty when it can.
    QString problem;

    /// Reads the file at \a path.
    static ThemeFile read(const QString &path);

    /// The title of the theme that this one extends.
    QString extends() const;
};
