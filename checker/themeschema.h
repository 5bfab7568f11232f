#pragma once

#include <QtCore/QJsonObject>

/// The JSON Schema (draft 2020-12) of theme files, made from ThemeKeys.
///
/// It is stricter than reading a theme: what reading silently passes over (a misspelt key, text
/// that is no color) does not fit. It can't tell what depends on other files or on the machine.
QJsonObject themeSchema();
