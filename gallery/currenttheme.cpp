#include "gallery/currenttheme.h"

#include "checker/document.h"
#include "checker/themefault.h"
#include "manager/thememanager.h"
#include "theme/theme.h"

#include <QtCore/QFileInfo>
#include <QtCore/QVariantMap>

#include <algorithm>
#include <tuple>

namespace {

const int longestLineage = 32;

/// The values of a theme without class names.
const ThemePrivate *dataOf(const Theme *theme)
{
    return qobject_cast<const ThemePrivate *>(theme->colors()->parent());
}

/// The classes of a theme in the order to show them: what most themes have comes first.
QStringList classesOf(const Theme *theme)
{
    static const QStringList wellKnown = { QStringLiteral("header"), QStringLiteral("primary"),
                                           QStringLiteral("danger"), QStringLiteral("muted"),
                                           QStringLiteral("code") };
    QStringList names;
    const ThemePrivate *data = dataOf(theme);
    if (!data)
        return names;
    for (auto scope = data->classScopes.cbegin(); scope != data->classScopes.cend(); ++scope) {
        // An empty scope selects nothing.
        if (!scope.value().isEmpty())
            names.append(scope.key());
    }
    const auto rank = [](const QString &name) {
        const int place = wellKnown.indexOf(name);
        return std::make_tuple(place < 0 ? wellKnown.size() : place, name);
    };
    std::sort(names.begin(), names.end(),
              [rank](const QString &a, const QString &b) { return rank(a) < rank(b); });
    return names;
}

/// The title of the theme that a \a document extends.
QString extendsOf(const Document &document)
{
    return document.object().value(QLatin1String("extends")).toString();
}

/// The title of the nearest ancestor of \a document whose file describes the class \a name.
QString originOf(const QString &name, Document document)
{
    QString origin;
    for (int i = 0; i < longestLineage && !document.object().contains(name); ++i) {
        origin = extendsOf(document);
        const Theme *parent = ThemeManager::getInstance()->themeFromName(origin);
        if (origin.isEmpty() || !parent)
            return QString();
        document = Document::read(parent->filename());
    }
    return origin;
}

/// Why the theme of the file at \a path does not come to be; empty if it does.
QString faultOf(const QString &path)
{
    const auto placed = [](Position position, const QString &fault) {
        return QStringLiteral("line %1, column %2: %3")
                .arg(position.line)
                .arg(position.column)
                .arg(fault);
    };
    const Document document = Document::read(path);
    if (document.text().isEmpty())
        return document.faultText();
    if (document.fault() != Document::NoFault)
        return placed(document.position(document.faultRange().begin), document.faultText());
    // Whether there is a parent, and comes in time, depends on the other files.
    const QVector<Problem> faults = themeFaults(path);
    return faults.isEmpty() ? QString() : placed(faults.first().begin, faults.first().message);
}

QVariantList stylesOf(const Theme *theme)
{
    QVariantList styles;
    const ThemePrivate *data = dataOf(theme);
    if (!data)
        return styles;
    QStringList keys = data->styles.keys();
    keys.sort();
    const QChar separator = QLatin1Char('_');
    for (const QString &key : qAsConst(keys)) {
        const int end = key.indexOf(separator);
        styles.append(QVariantMap{
                { QStringLiteral("style"), key.left(end) },
                { QStringLiteral("classname"), end < 0 ? QString() : key.mid(end + 1) } });
    }
    return styles;
}

} // namespace

bool CurrentTheme::Description::operator==(const Description &other) const
{
    const auto members = [](const Description &d) {
        return std::tie(d.fileName, d.extends, d.classNames, d.classOrigins, d.styles, d.problem);
    };
    return members(*this) == members(other);
}

CurrentTheme::CurrentTheme(QObject *parent)
    : QObject(parent)
{
    ThemeManager *manager = ThemeManager::getInstance();
    connect(manager, &ThemeManager::currentChanged, this, &CurrentTheme::follow);
    connect(&m_follower, &ThemeFollower::saved, this, &CurrentTheme::readAgain);
    follow(manager->current());
}

QString CurrentTheme::fileName() const
{
    return m_description.fileName;
}

QString CurrentTheme::extends() const
{
    return m_description.extends;
}

QStringList CurrentTheme::classNames() const
{
    return m_description.classNames;
}

QStringList CurrentTheme::classOrigins() const
{
    return m_description.classOrigins;
}

QVariantList CurrentTheme::styles() const
{
    return m_description.styles;
}

QString CurrentTheme::problem() const
{
    return m_description.problem;
}

void CurrentTheme::follow(Theme *theme)
{
    m_follower.follow(theme->filename());
    describe(theme, theme->filename().isEmpty() ? QString() : faultOf(theme->filename()));
}

void CurrentTheme::readAgain()
{
    Theme *theme = ThemeManager::getInstance()->current();
    const QString problem = faultOf(theme->filename());
    if (problem.isEmpty())
        theme->reload();
    describe(theme, problem);
}

void CurrentTheme::describe(const Theme *theme, const QString &problem)
{
    Description description = m_description;
    description.fileName = QFileInfo(theme->filename()).fileName();
    description.problem = problem;
    // While the file can't be applied, what it said before is what is shown.
    if (problem.isEmpty()) {
        const Document document = Document::read(theme->filename());
        description.extends = extendsOf(document);
        description.classNames = classesOf(theme);
        description.classOrigins.clear();
        for (const QString &name : qAsConst(description.classNames))
            description.classOrigins.append(originOf(name, document));
        description.styles = stylesOf(theme);
    }
    if (description == m_description)
        return;
    m_description = description;
    Q_EMIT changed();
}
