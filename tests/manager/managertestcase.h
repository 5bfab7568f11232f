#pragma once

#include "support/testcase.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>

class Theme;
class ThemeManager;

/// Base of the tests of the current theme.
///
/// Most of them use a manager of their own: a new one has an empty catalogue and has never
/// switched. It copies into the global theme of the process like the one of the process does. Only
/// "extends" is looked up in the latter.
class ManagerTestCase : public TestCase
{
    Q_OBJECT

protected:
    /// Adds a theme without a file.
    static Theme *addTheme(ThemeManager *manager, const char *title, int radius);

    /// Adds a theme whose file, in folder(), is named after it.
    Theme *addFile(ThemeManager *manager, const char *title, int radius,
                   const QByteArray &foreground = "#000000");

    /// Writes the theme's file in place, as an editor does that keeps the file.
    void rewrite(const char *title, const QByteArray &text);

    /// The name of the file of the theme that addFile() titled \a title.
    static QString fileOf(const char *title);

    static QByteArray radiusText(const char *title, int radius);

protected Q_SLOTS:
    void initTestCase();
};
