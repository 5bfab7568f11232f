#pragma once

#include "theme/themeprivate.h"
#include "values/tavolinsexport.h"
#include "values/themeobjectcolors.h"
#include "values/themeobjectfonts.h"

#include <QtCore/QJsonObject>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <QtGui/QColor>
#include <QtQml/qqml.h>

template <typename Object>
class Registry;
class RunningCall;

/// A theme as QML sees it: colors, fonts and corner radius, refined by class names.
///
/// One class serves three roles. The *global theme* is the one whose data every item follows; the
/// catalogue copies its current theme into it. A *file theme* is read from a theme file by load();
/// the catalogue owns it. An *attached theme* belongs to one item that uses the attached `Theme`:
/// it shares the global theme's data and adds the item's class names.
///
/// All values live in a ThemePrivate that several themes may share. If that data is gone (which
/// happens only after native code deleted it, or a theme that shared it), nothing breaks: colors()
/// and fonts() return groups with the defaults, radius() is 0, look-ups find nothing, setRadius()
/// has no effect. The next assignment to the theme, or its next reload(), gives it data again. An
/// assignment to the global theme, which every switch is, makes all attached themes share its data.
///
/// Themes live on the GUI thread; all their connections are direct.
class TAVOLINS_EXPORT Theme : public QObject
{
    Q_OBJECT

    /// The name by which the catalogue and other themes find this one. Default: empty.
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    /// Path of the theme file, on disk or in the resources (":/..."). Default: empty.
    Q_PROPERTY(QString filename READ filename WRITE setFilename NOTIFY filenameChanged)
    /// The colors that apply to this item, its class names included. Never null.
    Q_PROPERTY(ThemeObjectColors *colors READ colors NOTIFY themeObjectChanged)
    /// The fonts that apply to this item, its class names included. Never null.
    Q_PROPERTY(ThemeObjectFonts *fonts READ fonts NOTIFY themeObjectChanged)
    /// Corner radius in whole pixels. Class names have no influence on it. Default: 0.
    Q_PROPERTY(int radius READ radius WRITE setRadius NOTIFY radiusChanged)
    /// The item's class names, separated by single spaces. Default: empty.
    Q_PROPERTY(QString classnames READ classnames WRITE setClassnames NOTIFY classnamesChanged)

public:
    /// Creates a theme with data of its own that holds the defaults. The first theme ever created
    /// this way becomes the global theme.
    explicit Theme(QObject *parent = nullptr);

    /// Creates a theme that shares \a other's data and has its title, but no parent, file name or
    /// class names. Emits nothing.
    Theme(const Theme &other);

    /// Schedules the deletion of the data, even when other themes share it.
    ~Theme() override;

    /// Copies \a other's data into this theme's data (see ThemePrivate's assignment), takes its
    /// title without a signal, then calls sendUpdate(). File name and class names stay. A theme
    /// that has no data gets some; if \a other has none, only the title is taken.
    Theme &operator=(const Theme &other);

    /// The global theme. Creates the catalogue, and with it the global theme, when there is none.
    static Theme *global();

    /// Called by the QML engine once for each \a object that uses the attached `Theme`. The
    /// returned theme has no parent; it is destroyed with \a object, of whose end a child that
    /// \a object gets here tells it. If one of the theme's functions is running then, it follows
    /// nothing and emits nothing any more, and is destroyed after they have returned.
    static Theme *qmlAttachedProperties(QObject *object);

    /// A new theme without a parent that shares the global theme's data. The caller owns it; the
    /// argument is ignored.
    static Theme *getObjectTheme(QObject *object);

    /// The attached theme that \a object already has; null if it has none or is null itself.
    static Theme *attachedTheme(QObject *object);

    QString title() const;
    QString filename() const;
    ThemeObjectColors *colors() const;
    ThemeObjectFonts *fonts() const;
    int radius() const;
    QString classnames() const;

    /// Sets the file name to \a path and reads that file, see reload().
    int load(const QString &path);

    /// Reads the file named by filename() and applies it.
    ///
    /// Order: the font files beside it are registered, the data of the theme that it extends is
    /// copied in, title, "global" scope and class scopes are applied, the styles beside it are
    /// catalogued, sendUpdate() is called. Text that is not a JSON object counts as an empty one.
    /// \return 0 when the file was read and applied; 1 when it could not be opened (after the
    ///         warning "Couldn't open file."), is empty, is no file but a pipe or a device, or
    ///         can't be read to its end; 2 when it extends a theme that the catalogue does not
    ///         hold. On 1 and 2 the theme's values stay as they were. The number means nothing
    ///         when a handler destroyed the theme meanwhile.
    int reload();

    /// Applies a theme \a document: with \a header its title, its "global" scope and its class
    /// scopes; without it the document itself is the scope and the title is left alone.
    /// A scope that is not empty replaces all values by the defaults with that scope on top.
    void read(const QJsonObject &document, bool header);

    /// Loads a \a scope's colors, fonts and radius into \a target, or, when \a target is null,
    /// into a new theme whose parent is this one. A radius that is negative or no whole number is
    /// passed over.
    /// \param deriveMissing see ThemeObjectColors::load().
    /// \return the theme that was loaded into; null, and nothing is created, for an empty scope;
    ///         null when a handler destroyed that theme meanwhile.
    Theme *loadThemeScope(Theme *target, const QJsonObject &scope, bool deriveMissing);

    /// Does nothing: themes are never saved.
    void write(QJsonObject &document) const;

    /// Copies \a source's data into this theme's data. Does nothing when \a source is null or has
    /// no data.
    void hardCopy(Theme *source);

    /// The value at \a path (member names separated by "/") in the scope of one of the item's
    /// classes, else \a defaultValue. The class name written last that holds the path decides,
    /// which is the reverse of colors() and fonts(). A JSON null is found as an invalid QVariant.
    QVariant getClassValue(const QString &path, const QVariant &defaultValue) const;

    /// Enters the QML files of the folder "styles" beside the theme file into the style table,
    /// each under its base name. Entries of that name are replaced, others stay.
    void loadThemeQmlStyles();

    /// Registers every file of the folder "fonts" beside the theme file with the application's
    /// font database. Files that it refuses are passed over.
    void loadThemeFonts();

    /// The global theme; null until the first theme exists. Use global() to get one.
    static Theme *g_theme;

Q_SIGNALS:
    /// The title was set to another one.
    void titleChanged(const QString &title);
    /// Never emitted by this class; part of the interface for QML's own use.
    void themeChanged(); // clazy:exclude=overloaded-signal
    /// Everything may have changed; the last signal of sendUpdate().
    void needUpdate();
    void filenameChanged();
    /// The radius was set to another one, or everything may have changed.
    void radiusChanged();
    /// Never emitted by this class; part of the interface for QML's own use.
    void isActiveChanged();
    void classnamesChanged();
    /// The groups behind colors and fonts may be others now.
    void themeObjectChanged();

public Q_SLOTS:
    /// Rebuilds what the class names select and emits themeObjectChanged(), radiusChanged() and
    /// needUpdate(), in this order.
    void sendUpdate();

    void setTitle(const QString &title);
    void setFilename(const QString &filename);

    /// Sets the radius of the shared data, so of every theme that shares it, while only this
    /// theme emits radiusChanged().
    void setRadius(int radius);

    /// Calls sendUpdate() if the theme passed in is this one.
    void themeChanged(Theme *);

    /// The URL text of the QML file for \a style: the variant for the last of \a classnames that
    /// has one (`style_class`), else the plain style, else empty. The item's own class names are
    /// not considered.
    QString getStyle(const QString &style, const QString &classnames = QString());

    /// Sets the item's class names, trimmed, and emits themeObjectChanged() and then
    /// classnamesChanged(). The first name whose scope in the theme is not empty decides colors
    /// and fonts; scopes are never combined.
    void setClassnames(const QString &classnames);

    /// Whether \a classname is one of the item's class names. The empty name is one when there
    /// are none, or where two spaces follow each other.
    bool hasClassname(const QString &classname);

    /// White or black, whichever is readable on \a baseColor; where that is more than half
    /// transparent, on the theme's background.
    QColor complementaryColor(const QColor &baseColor);

protected:
    void connectNotify(const QMetaMethod &signal) override;

private:
    friend class DeferredDeletion;
    friend class ThemeManager;
    template <typename Object>
    friend class Registry;
    class ItemWatch;

    Theme(Theme *owner, ThemePrivate *data);

    static Theme *catalogued(const QString &title);
    ThemePrivate *shownData() const;
    void ensureData();
    void shareData(ThemePrivate *data);
    void followData();
    void release();
    bool isInUse() const;
    bool isDeletionScheduled() const;
    void storeTitle(const QString &title);
    void buildOverloaded();
    bool isOutdatedCopyOf(const Theme *source) const;

    QString m_title;
    QString m_filename;
    QString m_classnames;
    QStringList m_splitClassnames;
    QPointer<ThemePrivate> d;
    QPointer<Theme> overloaded;
    QMetaObject::Connection m_dataConnection;
    // Made when it is first asked for; what is written there concerns this theme alone.
    mutable ThemePrivate *m_absentData = nullptr;
    RunningCall *m_calls = nullptr;
    ItemWatch *m_itemWatch = nullptr;
    // That of the attached themes, or the one whose deletion is scheduled.
    Registry<Theme> *m_registry = nullptr;
    int m_place = -1;
    bool m_followsData = false;
    bool m_isCatalogued = false;
    bool m_ownsData = false;

    // Tells catalogues that their index of titles is out of date: a title changes without a signal
    // when a theme is assigned to.
    static unsigned s_cataloguedTitleChanges;
};

QML_DECLARE_TYPE(Theme)
QML_DECLARE_TYPEINFO(Theme, QML_HAS_ATTACHED_PROPERTIES)
