#pragma once

#include "theme/theme.h"
#include "values/tavolinsexport.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QByteArray>
#include <QtCore/QFileSystemWatcher>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtQml/qqml.h>

class RunningCall;

/// The process-wide catalogue of loaded themes and its one current theme.
///
/// As a list model it has a row for each theme, in the order they were added, with the title as
/// the role `display` and the Theme as the role `pointer`. Rows are only ever added.
///
/// The current theme is copied into the global theme, whose data every item follows. Its file is
/// watched, and read again when it changes in place. After the file was replaced by another one
/// (saved by renaming), the watch may be lost until the theme is made current again.
class TAVOLINS_EXPORT ThemeManager : public QAbstractListModel
{
    Q_OBJECT

    /// The current theme. Never null. Writing null changes nothing. At first, and again after
    /// native code has destroyed the current one, it is a theme that is not in the catalogue, with
    /// the defaults.
    Q_PROPERTY(Theme *current READ current WRITE setCurrent NOTIFY currentChanged)
    /// The row of the current theme, -1 when it is not in the catalogue.
    Q_PROPERTY(int currentIndex READ currentIndex WRITE setCurrentIndex NOTIFY currentChanged)

public:
    /// Creates a catalogue without themes. Use getInstance(): there is meant to be one only.
    ThemeManager();
    ~ThemeManager() override;

    /// The catalogue of this process, created on the first call. It is never destroyed and belongs
    /// to no engine.
    static ThemeManager *getInstance();

    Theme *current() const;
    int currentIndex() const;

    /// Adds \a theme as the last row. It stays owned by its parent; when it is destroyed, by a
    /// handler of the row signals for instance, or null in the first place, its row has no data.
    ///
    /// A handler of the row signals may add themes, too: they can be found by their title and made
    /// current at once, and get their rows as soon as the running insertion has reached everybody.
    void addTheme(Theme *theme);

    /// The first theme of the catalogue whose title equals \a name exactly; null if there is none.
    Theme *themeFromName(const QString &name) const;

    /// The number of themes, whatever \a parent is. Counts a theme once its row was announced.
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    /// \a current was made current; the global theme holds its values already.
    void currentChanged(Theme *current);

public Q_SLOTS:
    /// Makes \a current the current theme, whether or not it is in the catalogue: copies it into
    /// the global theme, watches its file, and emits currentChanged(). Null and the theme that is
    /// current already change nothing.
    ///
    /// If a handler of one of the signals on the way makes another theme current, that one stands
    /// and currentChanged() is not emitted for this one.
    void setCurrent(Theme *current);

    /// Makes the theme in row \a currentIndex current. A row that does not exist changes nothing,
    /// and neither does row 0 as long as no theme has been made current.
    void setCurrentIndex(int currentIndex);

    /// Loads each "*.thm" file of the folder \a path, in the order of their names, and adds the
    /// themes that could be read. A theme that extends one which comes later in the folder is
    /// tried once more at the end. Then makes the first theme titled \a current the current one,
    /// unless that is empty. A folder that does not exist adds nothing.
    void loadThemes(const QString &path, const QString &current = QString());

protected Q_SLOTS:
    /// Reads the current theme again, whatever the path is.
    void themeFileChanged(const QString &);
    /// Copies the current theme into the global theme.
    void updateGTheme();

private:
    void appendTheme(Theme *theme);
    void finishInsertion();
    void indexTitle(const QPointer<Theme> &theme) const;
    void indexTitles() const;
    Theme *ownTheme() const;
    void makeCurrent(Theme *theme);
    bool copyCurrentToGlobal();
    void forgetCurrent(QObject *destroyed);

    static ThemeManager *g_themeMng;

    int cachedIndex = 0;
    QList<QPointer<Theme>> themes;
    QHash<int, QByteArray> roleTable;
    QPointer<Theme> currentTheme;
    QFileSystemWatcher watcher;
    // What is current where no other theme is; made anew when native code has destroyed it.
    mutable QPointer<Theme> m_ownTheme;
    mutable QHash<QString, QPointer<Theme>> m_titleIndex;
    mutable unsigned m_indexedTitleChanges = 0;
    // The innermost copy of a current theme into the global theme that is being made.
    RunningCall *m_copies = nullptr;
    bool m_copyIsOutdated = false;
    bool m_isInserting = false;
    int m_rowCount = 0;
};

QML_DECLARE_TYPE(ThemeManager)
