// What the rules share: the themes that are loaded together, and the names of their colors.

#include "checker/rules.h"

#include <QtCore/QJsonObject>

namespace {

/// As many as are ever listed, and one more.
const int keptThemes = 4;

} // namespace

void ThemeSet::load()
{
    order = LoadOrder::load(entries);
    classUses.resize(classNames.size());
    for (const int theme : qAsConst(order.catalogue)) {
        inherit(theme);
        const QString &title = entries.at(theme).title;
        if (!title.isEmpty()) {
            titles.append(title);
            if (!firstTitled.contains(title))
                firstTitled.insert(title, theme);
            if (!firstTitledAlike.contains(title.toLower()))
                firstTitledAlike.insert(title.toLower(), theme);
        }
        for (const int name : qAsConst(themes.at(theme).shownClasses)) {
            ClassUse &use = classUses[name];
            ++use.count;
            if (use.themes.size() < keptThemes)
                use.themes.append(theme);
        }
    }
    for (int theme = 0; theme < themes.size(); ++theme) {
        const QString &title = entries.at(theme).title;
        if (!order.outcomes.at(theme).isLoaded && !firstLeftOut.contains(title))
            firstLeftOut.insert(title, theme);
    }
}

void ThemeSet::inherit(int theme)
{
    ThemeSummary &summary = themes[theme];
    summary.shownClasses = summary.classes;
    summary.describedClasses = summary.classes + summary.emptyClasses;
    summary.knownRoles = summary.globalRoles;
    const int parent = order.outcomes.at(theme).parent;
    if (parent < 0)
        return;
    const ThemeSummary &inherited = themes.at(parent);
    for (const int name : inherited.describedClasses) {
        if (summary.describedClasses.contains(name))
            continue;
        summary.describedClasses.append(name);
        if (inherited.shownClasses.contains(name))
            summary.shownClasses.append(name);
    }
    if (!summary.hasGlobal)
        summary.knownRoles = inherited.knownRoles;
}

QString ThemeSet::place(int theme) const
{
    const ThemeSummary &summary = themes.at(theme);
    return QStringLiteral("%1:%2:%3")
            .arg(summary.path)
            .arg(summary.place.line)
            .arg(summary.place.column);
}

bool ThemeSet::isShown(const QString &name) const
{
    const int number = int(classNames.indexOf(name));
    return number >= 0 && classUses.at(number).count > 0;
}

const QVector<ColorRole> &colorRoles(ColorFamily family)
{
    static const QVector<ColorRole> foregrounds = {
        { "foreground", "", &ThemeObjectColors::foreground },
        { "lighterForeground", "foreground", &ThemeObjectColors::lighterForeground },
        { "darkerForeground", "foreground", &ThemeObjectColors::darkerForeground },
    };
    static const QVector<ColorRole> backgrounds = {
        { "background", "", &ThemeObjectColors::background },
        { "lighterBackground", "background", &ThemeObjectColors::lighterBackground },
        { "darkerBackground", "background", &ThemeObjectColors::darkerBackground },
    };
    return family == ForegroundColors ? foregrounds : backgrounds;
}

unsigned roleBit(const QString &key)
{
    unsigned bit = 1;
    for (const ColorFamily family : { ForegroundColors, BackgroundColors }) {
        for (const ColorRole &role : colorRoles(family)) {
            if (key == QLatin1String(role.key))
                return bit;
            bit <<= 1;
        }
    }
    return 0;
}

unsigned colorRolesIn(const QJsonObject &colors, bool derives)
{
    unsigned roles = 0;
    for (const ColorFamily family : { ForegroundColors, BackgroundColors }) {
        bool isDerived = false;
        for (const ColorRole &role : colorRoles(family)) {
            const QString key = QLatin1String(role.key);
            const auto value = colors.constFind(key);
            const bool isSet = value != colors.constEnd();
            const bool isDecided = isSet ? readColor(value->toString()).isValid() : isDerived;
            if (isDecided)
                roles |= roleBit(key);
            // The base color comes before its shades.
            if (!*role.base)
                isDerived = derives && isDecided;
        }
    }
    return roles;
}

QColor readColor(const QString &text)
{
    // A new group holds invalid colors, and refuses what is no color. The theme's reader writes its
    // texts to it in the same way.
    ThemeObjectColors group(nullptr);
    group.setProperty("selection", text);
    return group.selection();
}

Range ThemeContext::keyRange(const QString &path) const
{
    const Node::Member *member = document.find(path);
    return member ? member->keyRange : Range{ 0, 1 };
}

Range ThemeContext::valueRange(const QString &path) const
{
    const Node::Member *member = document.find(path);
    return member ? member->node.range : Range{ 0, 1 };
}
