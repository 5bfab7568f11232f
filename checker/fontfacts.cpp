#include "checker/fontfacts.h"

#include "checker/qtfonts.h"

#include <algorithm>

bool FontFacts::isInstalled(const QString &family)
{
    const auto known = m_installed.constFind(family);
    if (known != m_installed.constEnd())
        return *known;
    const bool isThere = QtFonts::hasFamily(family);
    m_installed.insert(family, isThere);
    return isThere;
}

QStringList FontFacts::weights(const QString &family)
{
    const auto known = m_weights.constFind(family);
    if (known != m_weights.constEnd())
        return *known;
    const QStringList styles = QtFonts::styles(family);
    QStringList names;
    std::copy_if(styles.begin(), styles.end(), std::back_inserter(names),
                 [&](const QString &style) { return !QtFonts::isItalic(family, style); });
    if (names.isEmpty())
        names = styles;
    std::sort(names.begin(), names.end(), [&](const QString &a, const QString &b) {
        return std::make_pair(QtFonts::weight(family, a), a)
                < std::make_pair(QtFonts::weight(family, b), b);
    });
    m_weights.insert(family, names);
    return names;
}

bool FontFacts::hasWeight(const QString &family, const QString &name)
{
    return QtFonts::weight(family, name) != -1;
}
