#pragma once

#include "checker/document.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

class LoadedFolder;
class Theme;

/// A scope in the theme file that decides about it.
struct FoundScope
{
    /// "global" or the name of the class.
    QString name;
    /// The file that describes it; null if none does.
    const Document *document = nullptr;
    QString file;
    /// Title of the theme that the scope is inherited from; empty for the theme's own.
    QString inheritedFrom;

    /// Whether it has any effect: empty scopes count as missing.
    bool isEffective() const;
    /// The value at \a path (member names) in the scope; undefined when there is none.
    QJsonValue value(const QStringList &path) const;
    /// Where that value stands.
    Position position(const QStringList &path) const;
};

/// The file of a theme and those of the themes that it extends.
class Lineage
{
public:
    Lineage(const LoadedFolder &folder, const Theme *theme);

    /// The "global" that the theme's colors, fonts and radius come from. One that isn't effective
    /// means that they are the application's.
    FoundScope global() const;
    /// The scope of the class \a name.
    FoundScope classScope(const QString &name) const;
    /// The classes that it describes in any way, or inherits.
    QStringList classNames() const;
    /// The place of the title in the theme's own file.
    FoundScope own() const;

private:
    struct Generation
    {
        QString title;
        QString file;
        Document document;
    };

    FoundScope found(const Generation &generation, const QString &name) const;

    std::vector<Generation> m_generations;
};
