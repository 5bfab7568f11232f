#pragma once

#include "checker/problem.h"

#include <QtCore/QString>
#include <QtCore/QVector>

/// What keeps themes from coming to be at all: files that can't be read or parsed, and themes that
/// the catalogue leaves out. \a path is that of a folder or a theme file, see checkThemes().
QVector<Problem> themeFaults(const QString &path);

/// \a problem with what helps in one line, as in "moss.thm:4:7: error: ...; ... [code]".
QString lineOf(const Problem &problem);
