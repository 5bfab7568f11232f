#include "fuzz/programs/standin.h"

#include <QtCore/QPointer>
#include <QtQml/QQmlEngine>

namespace {

const int themeCount = 6;

QVector<StandInTheme *> &attachedThemes()
{
    static QVector<StandInTheme *> themes;
    return themes;
}

StandInManager *theManager = nullptr;

} // namespace

void StandInColors::update(int seed)
{
    foreground = QColor(seed % 256, 0, 0);
    background = QColor(0, seed % 256, 0);
    selection = QColor(0, 0, seed % 256);
    const QPointer<QObject> self(this);
    Q_EMIT foregroundChanged();
    if (self)
        Q_EMIT backgroundChanged();
    if (self)
        Q_EMIT selectionChanged();
}

void StandInFonts::update(int seed)
{
    mainFont.setPointSize(8 + seed % 20);
    h1Font.setPointSize(9 + seed % 20);
    const QPointer<QObject> self(this);
    Q_EMIT mainFontChanged();
    if (self)
        Q_EMIT h1FontChanged();
}

StandInTheme::StandInTheme(QObject *parent)
    : QObject(parent)
    , m_colors(this)
    , m_fonts(this)
{
    attachedThemes().append(this);
}

StandInTheme::~StandInTheme()
{
    attachedThemes().removeOne(this);
}

StandInTheme *StandInTheme::qmlAttachedProperties(QObject *object)
{
    return new StandInTheme(object);
}

void StandInTheme::setClassnames(const QString &classnames)
{
    if (m_classnames == classnames)
        return;
    m_classnames = classnames;
    const QPointer<QObject> self(this);
    Q_EMIT themeObjectChanged();
    if (self)
        Q_EMIT classnamesChanged();
}

void StandInTheme::update(int seed)
{
    const QPointer<QObject> self(this);
    m_colors.update(seed);
    if (self)
        m_fonts.update(seed);
    if (self) {
        radius = seed;
        Q_EMIT themeObjectChanged();
    }
    if (self)
        Q_EMIT radiusChanged();
    if (self)
        Q_EMIT needUpdate();
}

QString StandInTheme::getStyle(const QString &style, const QString &classnames) const
{
    return style + classnames;
}

bool StandInTheme::hasClassname(const QString &classname) const
{
    return m_classnames.contains(classname);
}

QColor StandInTheme::complementaryColor(const QColor &color) const
{
    return color.lighter();
}

StandInManager::StandInManager()
{
    theManager = this;
    for (int i = 0; i < themeCount; ++i)
        m_themes.append(new QObject(this));
}

StandInManager::~StandInManager()
{
    theManager = nullptr;
}

StandInManager *StandInManager::instance()
{
    return theManager;
}

void StandInManager::registerTypes()
{
    qmlRegisterUncreatableType<StandInTheme>("StandIn", 1, 0, "Theme", QString());
    qmlRegisterSingletonType<StandInManager>(
            "StandIn", 1, 0, "ThemeManager", [](QQmlEngine *, QJSEngine *) -> QObject * {
                QQmlEngine::setObjectOwnership(theManager, QQmlEngine::CppOwnership);
                return theManager;
            });
}

void StandInManager::setCurrentIndex(int index)
{
    if (index == m_currentIndex || index < 0 || index >= m_themes.size())
        return;
    m_currentIndex = index;
    update();
    Q_EMIT currentChanged();
}

QObject *StandInManager::theme(int n) const
{
    return m_themes.at(n % m_themes.size());
}

void StandInManager::update()
{
    const int seed = ++m_updates;
    QVector<QPointer<StandInTheme>> themes;
    for (StandInTheme *theme : qAsConst(attachedThemes()))
        themes.append(theme);
    for (const QPointer<StandInTheme> &theme : qAsConst(themes)) {
        if (theme)
            theme->update(seed);
    }
}

void StandInManager::setCurrent(QObject *theme)
{
    setCurrentIndex(m_themes.indexOf(theme));
}

void StandInManager::loadThemes(const QString &, const QString &)
{
    setCurrentIndex((m_currentIndex + 1) % m_themes.size());
}
