#include "checker/scratchtheme.h"

#include <QtCore/QPointer>
#include <QtCore/QVector>

ScratchTheme::ScratchTheme(const QString &path, const QJsonObject &document,
                           const ScratchTheme *parent)
{
    // The first theme of a process becomes the global one, which this must not be.
    Theme::global();
    m_theme = new Theme;
    m_data = qobject_cast<ThemePrivate *>(m_theme->colors()->parent());
    m_theme->setFilename(path);
    if (parent)
        m_theme->hardCopy(parent->m_theme);
    m_theme->read(document, true);
    m_theme->loadThemeQmlStyles();
}

ScratchTheme::~ScratchTheme()
{
    // The themes would leave their data to the event loop. Nobody else uses it, so it can go at
    // once.
    QVector<QPointer<QObject>> data{ m_data };
    const QList<Theme *> children = m_theme->findChildren<Theme *>();
    for (const Theme *theme : children)
        data.append(theme->colors()->parent());
    delete m_theme;
    for (const QPointer<QObject> &object : qAsConst(data))
        delete object;
}
