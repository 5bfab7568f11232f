#pragma once

#include "checker/problem.h"

#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

/// What to look for.
struct CheckOptions
{
    /// The contrast that texts need; 0 when it does not matter.
    double contrast = 4.5;
    /// Codes that are not told. Of notes and others alike.
    QSet<Code> disabled;
    /// Tells warnings as errors.
    bool warningsAreErrors = false;
    /// Where QML modules are, beside the places that Qt knows.
    QStringList importPaths;
};

/// What was found.
struct CheckReport
{
    /// In the order of the paths, of the files' names in a folder, and of the places in a file.
    QVector<Problem> problems;
    /// How many theme files were looked at.
    int themes = 0;
    /// Why some of the paths could not be checked, in sentences.
    QStringList failures;

    int count(Severity severity) const;
};

/// Looks for problems in themes.
///
/// A folder is checked with all that an application would find in it, a file among the others of
/// its folder, without telling theirs. Several folders count as loaded one after another into one
/// catalogue. Needs a GUI application; leaves neither fonts nor objects behind.
CheckReport checkThemes(const QStringList &paths, const CheckOptions &options = CheckOptions());
