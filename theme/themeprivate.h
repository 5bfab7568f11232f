#pragma once

#include "values/tavolinsexport.h"
#include "values/themeobjectcolors.h"
#include "values/themeobjectfonts.h"

#include <QtCore/QHash>
#include <QtCore/QJsonObject>
#include <QtCore/QObject>
#include <QtCore/QString>

#include <memory>

class RunningCall;
template <typename Object>
class Registry;

/// The values of a theme: corner radius, colors, fonts, style table and class scopes.
///
/// Several Theme objects may point at one ThemePrivate; each has updateTheme() connected to its
/// sendUpdate(), so that one assignment reaches them all before it returns. A ThemePrivate has no
/// parent and is owned by nobody in particular: the destructor of any Theme that points at it
/// schedules its deletion.
class TAVOLINS_EXPORT ThemePrivate : public QObject
{
    Q_OBJECT

public:
    /// Creates data with its defaults, see initDefaults().
    ThemePrivate();

    /// Copies radius, colors, styles and class scopes, but not the fonts, which are those of a new
    /// group. Emits nothing.
    ThemePrivate(const ThemePrivate &other);

    ~ThemePrivate() override;

    /// Takes \a other's values: colors, then fonts (each color and font that differs emits its own
    /// signal), then the radius. Styles and class scopes are merged: entries that only this object
    /// has stay, which is how a theme keeps what it inherits. Emits updateTheme() once at the end,
    /// also when nothing changed.
    ///
    /// If a handler of one of those signals assigns to this object again, that later assignment
    /// stands, has emitted updateTheme(), and the rest of this one is dropped.
    ThemePrivate &operator=(const ThemePrivate &other);

    /// Gives every value its default: the groups' own defaults, radius 0, no styles and no class
    /// scopes. Emits only the groups' change signals, whose handlers may destroy this object.
    void initDefaults();

    /// Corner radius in pixels. Theme::radius() cuts it to a whole number.
    double radius = 0;
    /// The color group; this object is its parent, except in a copy that was never initialized.
    ThemeObjectColors colors;
    /// The font group; this object is its parent, except in a copy that was never initialized.
    ThemeObjectFonts fonts;
    /// Style name (base name of a QML file) to the URL text of that file.
    QHash<QString, QString> styles;
    /// Class name to the JSON object of that class in the theme file.
    QHash<QString, QJsonObject> classScopes;

Q_SIGNALS:
    /// The values were assigned anew and are all in place.
    void updateTheme();

private:
    friend class DeferredDeletion;
    friend class Theme;
    template <typename Object>
    friend class Registry;

    struct Values;
    struct ResolvedScope;

    ThemePrivate(const ThemePrivate *original, const Values &values);

    Values values() const;
    bool contains(const ThemePrivate &other) const;
    ThemePrivate *withScope(const QString &classname, const QJsonObject &scope);
    static int radiusOf(const QJsonObject &scope);
    bool isInUse() const;
    bool isDeletionScheduled() const;

    QHash<QString, std::shared_ptr<ResolvedScope>> m_resolvedScopes;
    RunningCall *m_calls = nullptr;
    // The one whose deletion is scheduled is in a registry, no other.
    Registry<ThemePrivate> *m_registry = nullptr;
    int m_place = -1;
};
