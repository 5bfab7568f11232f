#include "manager/managertestcase.h"

#include "manager/thememanager.h"
#include "support/themetext.h"
#include "theme/theme.h"

#include <QtTest/QtTest>

Theme *ManagerTestCase::addTheme(ThemeManager *manager, const char *title, int radius)
{
    auto *theme = new Theme(manager);
    theme->setTitle(QLatin1String(title));
    theme->setRadius(radius);
    manager->addTheme(theme);
    return theme;
}

Theme *ManagerTestCase::addFile(ThemeManager *manager, const char *title, int radius,
                                const QByteArray &foreground)
{
    const QString path = write(fileOf(title),
                               coloredThemeText(QLatin1String(title), radius, foreground));
    auto *theme = new Theme(manager);
    if (theme->load(path) != 0)
        qFatal("can't load %s", title);
    manager->addTheme(theme);
    return theme;
}

void ManagerTestCase::rewrite(const char *title, const QByteArray &text)
{
    write(fileOf(title), text);
}

QString ManagerTestCase::fileOf(const char *title)
{
    return QLatin1String(title) + QLatin1String(".thm");
}

QByteArray ManagerTestCase::radiusText(const char *title, int radius)
{
    return themeText(QLatin1String(title), radius);
}

void ManagerTestCase::initTestCase()
{
    QCOMPARE(ThemeManager::getInstance()->current(), Theme::global());
}
