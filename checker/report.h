#pragma once

#include "checker/checker.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

/// The forms in which a report is told.
namespace Report {

struct TextStyle
{
    /// Colors for a terminal.
    bool hasColors = false;
    /// The line of each problem with a mark under its place.
    bool hasSource = false;
};

/// `file:line:column: severity: message [code]` for each problem, helps below it, and a summary in
/// the last line. What could control a terminal is replaced in texts from files.
QString text(const CheckReport &report, TextStyle style);

/// The last line of text(): what was checked and found, and whether some of it could not be
/// checked.
QString summary(const CheckReport &report);

/// One object in one line, described in docs/checker.md.
QByteArray json(const CheckReport &report);

/// A SARIF 2.1.0 log with one run.
QByteArray sarif(const CheckReport &report);

} // namespace Report
