#pragma once

#include "checker/rules.h"

#include <QtCore/QStringList>

/// \file
/// What is looked for in the folders beside the theme files. The problems come in the order of the
/// files' names.

/// A folder of themes as it was given, and its absolute path.
struct ThemeFolder
{
    QString path;
    QString filePath;
};

/// The QML files in the folder "styles" of \a folder. \a stylesElsewhere are the names of the
/// styles in the other folders that are loaded as well. \param importPaths where else QML modules
/// are.
QVector<Problem> checkStyles(const ThemeFolder &folder, const ThemeSet &set,
                             const QStringList &stylesElsewhere, const QStringList &importPaths);

/// The names of the styles in the folder "styles" of \a folder.
QStringList styleNames(const ThemeFolder &folder);

/// Registers the files in the folder "fonts" of a folder of themes as long as it lives.
class RegisteredFonts
{
public:
    explicit RegisteredFonts(const ThemeFolder &folder);
    ~RegisteredFonts();

    RegisteredFonts(const RegisteredFonts &) = delete;
    RegisteredFonts &operator=(const RegisteredFonts &) = delete;

    /// The files that the font database refused.
    QVector<Problem> problems() const { return m_problems; }

private:
    QVector<int> m_ids;
    QVector<Problem> m_problems;
};
