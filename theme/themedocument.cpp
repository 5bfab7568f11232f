// Theme: reading a theme document.

#include "theme/deferreddeletion.h"
#include "theme/loadstatus.h"
#include "theme/theme.h"
#include "values/runningcall.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>

namespace {

const QLatin1String titleKey("title");
const QLatin1String globalKey("global");

/// Whether \a path is something that opening or reading may never come back from.
bool isPipeOrDevice(const QString &path)
{
    // Asking for such a name would write a line of Qt's own on the log.
    if (path.isEmpty() || path.contains(QChar::Null))
        return false;
    // Where nothing can be found out, there are no permissions either; opening tells then.
    const QFileInfo info(path);
    return info.permission(QFile::ReadOwner) && !info.isFile() && !info.isDir();
}

} // namespace

int Theme::load(const QString &path)
{
    const RunningCall self(m_calls);
    setFilename(path);
    return self.isAlive() ? reload() : Failed;
}

int Theme::reload()
{
    const RunningCall self(m_calls);
    loadThemeFonts();
    // The application announces new fonts, and a handler may destroy this theme.
    if (!self.isAlive())
        return Failed;

    if (isPipeOrDevice(m_filename))
        return Failed;
    QFile file(m_filename);
    // Without a name, opening would write a line of Qt's own on the log.
    if (m_filename.isEmpty() || !file.open(QIODevice::ReadOnly)) {
        qWarning("Couldn't open file.");
        return Failed;
    }
    const qint64 size = file.size();
    const QByteArray text = file.readAll();
    // The beginning of a document reads like an empty one, which would take the title away.
    const bool isComplete = file.error() == QFile::NoError && text.size() >= size;
    file.close();
    if (text.isEmpty() || !isComplete)
        return Failed;
    const QJsonObject document = QJsonDocument::fromJson(text).object();

    // A handler of the signals below may read the file again, assign to this theme or destroy it;
    // what is left of this reading is out of date then.
    RunningCall::supersede(m_calls);
    const RunningCall reading(m_calls);

    const QString parentTitle = document.value(QLatin1String("extends")).toString();
    if (!parentTitle.isEmpty()) {
        const Theme *parentTheme = catalogued(parentTitle);
        if (!parentTheme)
            return WaitsForParent;
        if (parentTheme->d) {
            ensureData();
            *d = *parentTheme->d;
        }
    }
    if (reading.isCurrent())
        read(document, true);
    if (reading.isCurrent())
        loadThemeQmlStyles();
    if (reading.isCurrent())
        sendUpdate();
    return Loaded;
}

void Theme::read(const QJsonObject &document, bool header)
{
    const RunningCall self(m_calls);

    if (header)
        setTitle(document.value(titleKey).toString());
    if (!self.isCurrent())
        return;
    // The scope is loaded over the defaults on purpose: with a "global" of its own, a theme
    // inherits only class scopes and styles.
    const QJsonObject scope = header ? document.value(globalKey).toObject() : document;
    if (Theme *values = loadThemeScope(nullptr, scope, true)) {
        DeferredDeletion::schedule(values);
        ensureData();
        *d = *values->d;
        if (!self.isCurrent())
            return;
    }
    ensureData();
    for (auto member = document.constBegin(); member != document.constEnd(); ++member) {
        const QString key = member.key();
        if (key != titleKey && key != globalKey)
            d->classScopes.insert(key, member.value().toObject());
    }
}

Theme *Theme::loadThemeScope(Theme *target, const QJsonObject &scope, bool deriveMissing)
{
    if (scope.isEmpty())
        return nullptr;
    if (!target)
        target = new Theme(this, new ThemePrivate);
    const RunningCall loading(target->m_calls);
    target->ensureData();

    target->colors()->loadMember(scope, deriveMissing);
    if (loading.isAlive())
        target->fonts()->loadMember(scope, deriveMissing);
    const int scopeRadius = ThemePrivate::radiusOf(scope);
    if (loading.isAlive() && scopeRadius >= 0)
        target->setRadius(scopeRadius);
    // Handlers of the signals above may have destroyed the target.
    return loading.isAlive() ? target : nullptr;
}
