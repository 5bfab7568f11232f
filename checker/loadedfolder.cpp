#include "checker/loadedfolder.h"

#include "manager/thememanager.h"
#include "theme/theme.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QEvent>
#include <QtCore/QFileInfo>
#include <QtGui/QFontDatabase>

#include <algorithm>

namespace {

void dropMessage(QtMsgType, const QMessageLogContext &, const QString &)
{
}

} // namespace

LoadedFolder::LoadedFolder(const QString &path)
    : m_path(QDir(path).absolutePath())
{
    ThemeManager *manager = ThemeManager::getInstance();
    const int pointerRole = manager->roleNames().key(QByteArrayLiteral("pointer"));
    const int before = manager->rowCount();
    const QtMessageHandler handler = qInstallMessageHandler(dropMessage);
    manager->loadThemes(m_path);
    qInstallMessageHandler(handler);
    for (int row = before; row < manager->rowCount(); ++row) {
        const QVariant pointer = manager->data(manager->index(row), pointerRole);
        m_themes.append(qobject_cast<Theme *>(pointer.value<QObject *>()));
    }
}

LoadedFolder::~LoadedFolder()
{
    for (const QPointer<Theme> &theme : std::as_const(m_themes))
        delete theme;
    // Their data, and the themes that were not added, are still waiting to be deleted.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QFontDatabase::removeAllApplicationFonts();
}

QList<Theme *> LoadedFolder::themes() const
{
    QList<Theme *> result;
    for (const QPointer<Theme> &theme : m_themes)
        result.append(theme);
    return result;
}

Theme *LoadedFolder::fromFile(const QString &path) const
{
    const QString file = QFileInfo(path).absoluteFilePath();
    const auto theme = std::find_if(
            m_themes.begin(), m_themes.end(), [&file](const QPointer<Theme> &candidate) {
                return candidate && QFileInfo(candidate->filename()) == QFileInfo(file);
            });
    return theme == m_themes.end() ? nullptr : theme->data();
}

Theme *LoadedFolder::titled(const QString &title) const
{
    const auto theme = std::find_if(m_themes.begin(), m_themes.end(),
                                    [&title](const QPointer<Theme> &candidate) {
                                        return candidate && candidate->title() == title;
                                    });
    return theme == m_themes.end() ? nullptr : theme->data();
}

QStringList LoadedFolder::leftOut() const
{
    const QDir folder(m_path);
    QStringList result;
    const QStringList names = folder.entryList(QStringList(QStringLiteral("*.thm")));
    for (const QString &name : names) {
        const QString path = folder.absoluteFilePath(name);
        if (!fromFile(path))
            result.append(path);
    }
    return result;
}
