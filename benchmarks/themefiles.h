#pragma once

#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

/// Theme files for the measurements, in a folder that goes with this object.
class ThemeFiles
{
public:
    enum class Parents {
        /// No theme extends another.
        None,
        /// All themes extend one that comes after them.
        One,
        /// The first half extends the second half, each theme one of its own.
        Each,
    };

    ThemeFiles();

    /// The folder.
    QString path() const;

    /// Writes one theme for each look, its class scopes included.
    void writeLooks() const;

    /// Writes the theme titled as look number \a title with the values of look number \a look.
    void writeLook(int title, int look) const;

    /// Writes \a count themes of 3 KB with ten class scopes.
    void writeMany(int count) const;

    /// Writes \a count themes of 3 KB in which the checker finds no problem.
    void writeClean(int count) const;

    /// Writes \a count themes of a few lines.
    void writeSmall(int count, Parents parents) const;

    /// Writes ten component files into a folder "styles" beside the themes.
    void writeStyles() const;

    static QString lookTitle(int look);
    /// A class whose scope has colors and fonts.
    static QString className(int number);
    /// A path that only the first class has a value for.
    static QString deepPath();
    /// A component in the folder "styles".
    static QString styleName(int number);
    /// A class that no theme has a scope for.
    static QString unknownClass();

private:
    QTemporaryDir m_folder;
};
