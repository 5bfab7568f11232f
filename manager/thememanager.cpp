#include "manager/thememanager.h"

#include "theme/loadstatus.h"
#include "values/runningcall.h"

#include <QtCore/QDir>
#include <QtCore/QScopedValueRollback>
#include <QtQml/QQmlEngine>

#include <utility>

ThemeManager *ThemeManager::g_themeMng = nullptr;

namespace {

enum Role { PointerRole = Qt::UserRole + 1 };

/// Only the form "qrc:/" counts as a resource here; the watcher has nothing to watch there.
bool isWatchable(const QString &filename)
{
    return !filename.isEmpty() && !filename.startsWith(QLatin1String("qrc:/"));
}

} // namespace

ThemeManager::ThemeManager()
{
    roleTable = QAbstractListModel::roleNames();
    roleTable.insert(PointerRole, QByteArrayLiteral("pointer"));
    makeCurrent(ownTheme());
    connect(&watcher, SIGNAL(fileChanged(QString)), this, SLOT(themeFileChanged(QString)));
}

ThemeManager::~ThemeManager()
{
    RunningCall::forget(m_copies);
}

ThemeManager *ThemeManager::getInstance()
{
    if (!g_themeMng) {
        g_themeMng = new ThemeManager;
        // Each engine that asks for the singleton gets this object; none of them may delete it.
        QQmlEngine::setObjectOwnership(g_themeMng, QQmlEngine::CppOwnership);
    }
    return g_themeMng;
}

Theme *ThemeManager::current() const
{
    // Native code that destroyed it may have cut the connection that tells.
    return currentTheme ? currentTheme.data() : ownTheme();
}

int ThemeManager::currentIndex() const
{
    return int(themes.indexOf(current()));
}

Theme *ThemeManager::ownTheme() const
{
    if (!m_ownTheme)
        m_ownTheme = new Theme(const_cast<ThemeManager *>(this));
    return m_ownTheme;
}

void ThemeManager::addTheme(Theme *theme)
{
    if (m_isInserting) {
        // Called by a handler of the signals below. Views take insertions one after another, so
        // the running call announces this row when it has finished with its own.
        appendTheme(theme);
        return;
    }
    const QScopedValueRollback<bool> isInserting(m_isInserting, true);
    // A handler of the announcement may destroy the theme; its row has no data then.
    const QPointer<Theme> added(theme);
    beginInsertRows(QModelIndex(), m_rowCount, m_rowCount);
    appendTheme(added);
    finishInsertion();
    while (m_rowCount < themes.size()) {
        beginInsertRows(QModelIndex(), m_rowCount, m_rowCount);
        finishInsertion();
    }
}

void ThemeManager::appendTheme(Theme *theme)
{
    themes.append(theme);
    indexTitle(theme);
    if (!theme)
        return;
    theme->m_isCatalogued = true;
    // QML gets at the themes through the model, and would leave them to its garbage collector.
    QQmlEngine::setObjectOwnership(theme, QQmlEngine::CppOwnership);
}

void ThemeManager::finishInsertion()
{
    const int row = m_rowCount++;
    endInsertRows();
    if (Theme *theme = themes.at(row))
        connect(this, SIGNAL(currentChanged(Theme*)), theme, SLOT(themeChanged(Theme*)));
}

Theme *ThemeManager::themeFromName(const QString &name) const
{
    if (m_indexedTitleChanges != Theme::s_cataloguedTitleChanges)
        indexTitles();
    auto entry = m_titleIndex.constFind(name);
    if (entry != m_titleIndex.constEnd() && !entry.value()) {
        // That theme was destroyed; a later one may have the same title.
        indexTitles();
        entry = m_titleIndex.constFind(name);
    }
    return entry == m_titleIndex.constEnd() ? nullptr : entry.value().data();
}

/// Enters a theme that comes after all those entered before: the first one keeps a title.
void ThemeManager::indexTitle(const QPointer<Theme> &theme) const
{
    if (theme && !m_titleIndex.contains(theme->title()))
        m_titleIndex.insert(theme->title(), theme);
}

void ThemeManager::indexTitles() const
{
    m_titleIndex.clear();
    for (const QPointer<Theme> &theme : themes)
        indexTitle(theme);
    m_indexedTitleChanges = Theme::s_cataloguedTitleChanges;
}

int ThemeManager::rowCount(const QModelIndex &) const
{
    return m_rowCount;
}

QVariant ThemeManager::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_rowCount)
        return QVariant();
    Theme *theme = themes.at(index.row());
    if (!theme)
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return theme->title();
    case PointerRole:
        return QVariant::fromValue<QObject *>(theme);
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> ThemeManager::roleNames() const
{
    return roleTable;
}

void ThemeManager::loadThemes(const QString &path, const QString &current)
{
    // Else the first theme of the folder would take the place of a global theme that native code
    // has destroyed.
    Theme::global();
    const QDir folder(path);
    // A handler of the rows added on the way may destroy themes.
    QList<QPointer<Theme>> waiting;
    if (folder.exists()) {
        const QStringList names = folder.entryList(QStringList(QStringLiteral("*.thm")));
        for (const QString &name : names) {
            const QPointer<Theme> theme(new Theme(this));
            const int status = theme->load(folder.absoluteFilePath(name));
            if (!theme)
                continue;
            switch (status) {
            case Loaded:
                addTheme(theme);
                break;
            case Failed:
                theme->deleteLater();
                break;
            case WaitsForParent:
                waiting.append(theme);
                break;
            }
        }
    }
    // One more try only, on purpose: chains that need more must be named in the order they extend.
    for (const QPointer<Theme> &theme : std::as_const(waiting)) {
        const int status = theme ? theme->reload() : Failed;
        if (!theme)
            continue;
        if (status == Loaded)
            addTheme(theme);
        else
            theme->deleteLater();
    }
    if (!current.isEmpty())
        setCurrent(themeFromName(current));
}

void ThemeManager::setCurrent(Theme *current)
{
    if (!current || current == currentTheme)
        return;
    const QPointer<Theme> theme(current);

    // An old theme without a file keeps its link on purpose: its updates go on refreshing the
    // global theme.
    if (currentTheme && !currentTheme->filename().isEmpty()) {
        if (isWatchable(currentTheme->filename()))
            watcher.removePath(currentTheme->filename());
        disconnect(currentTheme, nullptr, this, nullptr);
    }
    makeCurrent(theme);
    // A handler may have switched again, or destroyed the theme: that has done all that is left.
    if (!copyCurrentToGlobal())
        return;

    // Unique for the themes that kept their link: else it would multiply with each switch.
    connect(theme, SIGNAL(needUpdate()), this, SLOT(updateGTheme()), Qt::UniqueConnection);
    cachedIndex = int(themes.indexOf(theme));
    if (isWatchable(theme->filename())) {
        // The file name of an earlier theme may have been set to another one while it was watched.
        const QStringList watched = watcher.files();
        if (!watched.isEmpty())
            watcher.removePaths(watched);
        watcher.addPath(theme->filename());
    }
    Q_EMIT currentChanged(theme);
}

void ThemeManager::makeCurrent(Theme *theme)
{
    // What is being copied into the global theme is not the current theme any more.
    RunningCall::supersede(m_copies);
    currentTheme = theme;
    connect(theme, &QObject::destroyed, this, &ThemeManager::forgetCurrent, Qt::UniqueConnection);
}

void ThemeManager::setCurrentIndex(int currentIndex)
{
    // Compared with the index of the last switch, which starts at 0, and meant so: until there was
    // one, a view that writes its initial row 0 does not choose a theme.
    if (currentIndex == cachedIndex)
        return;
    const bool exists = currentIndex >= 0 && currentIndex < themes.size();
    setCurrent(exists ? themes.at(currentIndex).data() : nullptr);
}

void ThemeManager::themeFileChanged(const QString &)
{
    if (currentTheme)
        currentTheme->reload();
}

void ThemeManager::updateGTheme()
{
    // A theme that shares the global theme's data is updated by being copied there, and asks for
    // the next copy by that.
    if (m_copies && m_copies->isCurrent()) {
        m_copyIsOutdated = true;
        return;
    }
    if (currentTheme)
        copyCurrentToGlobal();
}

/// Returns whether the theme that was copied still is the current one.
bool ThemeManager::copyCurrentToGlobal()
{
    const RunningCall copy(m_copies);
    do {
        m_copyIsOutdated = false;
        *Theme::global() = *currentTheme;
        // Usually the request was the copy's own doing, but a handler may have read the theme's
        // file again meanwhile.
    } while (m_copyIsOutdated && copy.isCurrent()
             && Theme::global()->isOutdatedCopyOf(currentTheme));
    return copy.isCurrent();
}

void ThemeManager::forgetCurrent(QObject *destroyed)
{
    // The pointer has been cleared already; other themes keep this connection after a switch.
    Q_UNUSED(destroyed)
    if (currentTheme)
        return;
    makeCurrent(ownTheme());
    cachedIndex = -1;
    const QStringList watched = watcher.files();
    if (!watched.isEmpty())
        watcher.removePaths(watched);
    Q_EMIT currentChanged(currentTheme);
}
