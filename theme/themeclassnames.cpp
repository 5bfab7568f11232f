// Theme: class names, and the scopes and styles that they select.

#include "theme/deferreddeletion.h"
#include "theme/theme.h"
#include "values/runningcall.h"

#include <QtCore/QStringList>

#include <string_view>
#include <utility>

namespace {

#if QT_VERSION >= QT_VERSION_CHECK(5, 14, 0)
const Qt::SplitBehavior skipEmptyParts = Qt::SkipEmptyParts;
#else
const QString::SplitBehavior skipEmptyParts = QString::SkipEmptyParts;
#endif

const char16_t classSeparator = u' ';
const QLatin1Char pathSeparator('/');

QStringList splitNames(const QString &classnames)
{
    return classnames.isEmpty() ? QStringList()
                                : classnames.split(QChar(classSeparator), skipEmptyParts);
}

/// The characters of \a text, to be cut without copies. No class of Qt's does that in all of its
/// versions.
std::u16string_view viewed(const QString &text)
{
    return { reinterpret_cast<const char16_t *>(text.utf16()), size_t(text.size()) };
}

/// The value at \a path in \a scope; an undefined value if there is none.
QJsonValue valueAt(QJsonObject scope, const QStringList &path)
{
    if (path.isEmpty())
        return QJsonValue(QJsonValue::Undefined);
    for (int i = 0; i < path.size() - 1; ++i)
        scope = scope.value(path.at(i)).toObject();
    return scope.value(path.last());
}

} // namespace

void Theme::setClassnames(const QString &classnames)
{
    // The argument is compared before it is trimmed: a value with outer spaces always counts as a
    // change, so setting it twice updates the item twice.
    if (m_classnames == classnames)
        return;
    const RunningCall self(m_calls);
    m_classnames = classnames.trimmed();
    m_splitClassnames = splitNames(m_classnames);
    followData();
    buildOverloaded();
    if (self.isAlive())
        Q_EMIT classnamesChanged();
}

bool Theme::hasClassname(const QString &classname)
{
    // Empty parts count: without class names there is one, which is the empty name.
    const std::u16string_view wanted = viewed(classname);
    std::u16string_view rest = viewed(m_classnames);
    for (;;) {
        const size_t end = rest.find(classSeparator);
        if (rest.substr(0, end) == wanted)
            return true;
        if (end == std::u16string_view::npos)
            return false;
        rest.remove_prefix(end + 1);
    }
}

QVariant Theme::getClassValue(const QString &path, const QVariant &defaultValue) const
{
    if (!d)
        return defaultValue;
    const QStringList names = m_splitClassnames;
    const QStringList segments = path.split(pathSeparator, skipEmptyParts);
    // From the last name to the first on purpose, the reverse of buildOverloaded().
    for (auto name = names.crbegin(); name != names.crend(); ++name) {
        const QJsonValue value = valueAt(d->classScopes.value(*name), segments);
        // Later versions of Qt turn a JSON null into a valid variant.
        if (value.isNull())
            return QVariant();
        if (!value.isUndefined())
            return value.toVariant();
    }
    return defaultValue;
}

QString Theme::getStyle(const QString &style, const QString &classnames)
{
    if (!d)
        return QString();
    QString key = style + QLatin1Char('_');
    const int stem = int(key.size());
    key.reserve(stem + int(classnames.size()));
    // From the last name to the first.
    for (int end = int(classnames.size()); end > 0;) {
        const int start = int(viewed(classnames).rfind(classSeparator, size_t(end - 1))) + 1;
        if (start < end) {
            key.truncate(stem);
            key.append(classnames.constData() + start, end - start);
            QString url = d->styles.value(key);
            if (!url.isEmpty())
                return url;
        }
        end = start - 1;
    }
    return d->styles.value(style);
}

void Theme::buildOverloaded()
{
    // Bindings that are being evaluated may still use the old groups.
    if (overloaded) {
        overloaded->m_overloads = nullptr;
        DeferredDeletion::schedule(overloaded);
        overloaded = nullptr;
    }

    // The first class name whose scope is not empty decides. Scopes are never combined.
    for (const QString &classname : std::as_const(m_splitClassnames)) {
        if (!d)
            break;
        const auto scope = std::as_const(d->classScopes).constFind(classname);
        if (scope != d->classScopes.constEnd() && !scope->isEmpty()) {
            overloaded = new Theme(this, d->withScope(classname, *scope));
            overloaded->m_overloads = this;
            break;
        }
    }
    Q_EMIT themeObjectChanged();
}
