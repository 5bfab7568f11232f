#pragma once

#include "checker/codes.h"
#include "checker/document.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

/// Something that the author of a theme should know, with its place. It needs no file any more to
/// be shown.
struct Problem
{
    Code code = Code::SyntaxError;
    Severity severity = Severity::Error;
    /// One sentence without a full stop. Keys and values in it stand in backquotes.
    QString message;
    /// What could be done about it, or what should be known.
    QStringList help;

    /// The path as it was given to the checker.
    QString file;
    Position begin;
    /// After the last character. In the line of begin, or after it.
    Position end;
    /// The line of begin, or the part of it around begin when it is long.
    QString excerpt;
    /// How many characters of the line come before the excerpt.
    int excerptColumn = 0;

    /// Sets the place to \a range of \a document.
    void locate(const QString &path, const Document &document, Range range);

    /// The order in which problems of one file are told.
    bool operator<(const Problem &other) const;
};
