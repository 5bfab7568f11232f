#pragma once

#include <QtQml/QQmlApplicationEngine>

class QQuickWindow;

/// The window of the example and the engine behind it. Reads and writes the settings of the
/// application, whose name and organization have to be set.
class SettingsWindow
{
public:
    /// \param importPath where the engine finds the QML module
    explicit SettingsWindow(const QString &importPath);

    /// Null when the module, or one of Qt's, is missing; the log says which.
    QQuickWindow *window() const;

private:
    QQmlApplicationEngine m_engine;
};
