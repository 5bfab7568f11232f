#pragma once

#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QStringList>

class Theme;

/// A folder of themes, loaded by the catalogue as a running application loads it.
///
/// The themes and the fonts beside them are gone again when this is destroyed, so that the next
/// folder starts as in a fresh application. Only one may live at a time.
class LoadedFolder
{
public:
    /// Loads the themes of the folder at \a path; none if there is no such folder. What the plugin
    /// says on Qt's log meanwhile is dropped: leftOut() tells the same with names.
    explicit LoadedFolder(const QString &path);
    ~LoadedFolder();

    LoadedFolder(const LoadedFolder &) = delete;
    LoadedFolder &operator=(const LoadedFolder &) = delete;

    /// The themes in the order of the catalogue.
    QList<Theme *> themes() const;
    /// The theme that was read from the file at \a path; null if there is none.
    Theme *fromFile(const QString &path) const;
    /// The first theme of that title; null if there is none.
    Theme *titled(const QString &title) const;
    /// The absolute paths of the theme files that gave no theme, in the order of their names.
    QStringList leftOut() const;

private:
    QString m_path;
    QList<QPointer<Theme>> m_themes;
};
