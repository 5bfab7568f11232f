#include "examples/settings/settingswindow.h"

#include <QtQuick/QQuickWindow>

// The resources of a static library have to be asked for, outside of any namespace.
static void initResources()
{
    Q_INIT_RESOURCE(settings);
}

SettingsWindow::SettingsWindow(const QString &importPath)
{
    initResources();
    m_engine.addImportPath(importPath);
    m_engine.load(QUrl(QStringLiteral("qrc:/settings/qml/Main.qml")));
}

QQuickWindow *SettingsWindow::window() const
{
    return qobject_cast<QQuickWindow *>(m_engine.rootObjects().value(0));
}
