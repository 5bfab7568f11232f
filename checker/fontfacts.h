#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// What the font database knows of families, asked once for each of them.
class FontFacts
{
public:
    bool isInstalled(const QString &family);

    /// The names that "weight" can have for \a family, from light to bold; upright styles only, if
    /// there are any.
    QStringList weights(const QString &family);

    /// Whether "weight" can have the value \a name for \a family.
    static bool hasWeight(const QString &family, const QString &name);

private:
    QHash<QString, bool> m_installed;
    QHash<QString, QStringList> m_weights;
};
