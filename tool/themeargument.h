#pragma once

#include <QtCore/QString>

#include <memory>

class LoadedFolder;
class Theme;

/// A theme that was named on the command line, by its file or by its title, loaded together with
/// its folder.
class ThemeArgument
{
public:
    /// \param argument the path of a theme file, or the title of a theme in \a folder
    ThemeArgument(const QString &argument, const QString &folder);
    ~ThemeArgument();

    /// Null when there is no such theme; problem() says why then.
    Theme *theme() const { return m_theme; }
    const LoadedFolder &folder() const { return *m_folder; }

    /// What the author should know, in one line: why there is no theme, or what keeps its file from
    /// being read.
    QString problem() const { return m_problem; }

private:
    void findFile(const QString &path);
    void findTitle(const QString &title, const QString &folder);

    std::unique_ptr<LoadedFolder> m_folder;
    Theme *m_theme = nullptr;
    QString m_problem;
};
