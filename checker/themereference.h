#pragma once

#include <QtCore/QString>

/// The tables of all keys in docs/theme-files.md, in Markdown, made from ThemeKeys.
QString themeReference();
