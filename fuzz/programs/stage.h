#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>
#include <QtCore/QVariant>
#include <QtCore/QVector>
#include <QtQml/QQmlParserStatus>

/// Lies in each object that shows the theme (`property QtObject mark: Mark {}`), so that the stage
/// knows all of them, and when objects are being created.
class Mark : public QObject, public QQmlParserStatus
{
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    /// Whether the object belongs to a view, which does not expect others to delete it.
    Q_PROPERTY(bool isOwned MEMBER isOwned NOTIFY isOwnedChanged)

public:
    explicit Mark(QObject *parent = nullptr);
    ~Mark() override;

    void classBegin() override;
    void componentComplete() override;

    bool isOwned = false;

Q_SIGNALS:
    void isOwnedChanged();
};

/// What programs do natively: files, deletions, event loops. Known to them as "fuzz".
///
/// It refuses what a QML engine does not survive whatever type is attached: an event loop or
/// a deletion while objects are being created, or while a handler of an object runs that could be
/// deleted by it. Only one may live at a time.
class Stage : public QObject
{
    Q_OBJECT

public:
    explicit Stage(bool usesStandIn);
    ~Stage() override;

    void setRoot(QObject *root) { m_root = root; }

    /// Calls the function \a name with the number \a index of the program \a root, if it has one.
    static void callIn(QObject *root, const char *name, int index);

    /// Handlers act while this is so, until they have acted often enough.
    void setActing(bool isActing) { m_isActing = isActing; }

    /// The objects that show the theme, in order of their creation.
    QObjectList shown() const;

    bool isCreating() const { return m_creating > 0; }

    /// Writes a theme file into \a folder and returns its path. Each has a title of its own.
    QString writeTheme(const QString &folder, int seed, QString *title);

    Q_INVOKABLE bool mayAct();

    /// Whether no handler is acting.
    Q_INVOKABLE bool isIdle() const { return m_depth == 0; }

    /// Calls the program's function act<n>(), for a handler whose object may die meanwhile.
    Q_INVOKABLE void run(int action);

    /// The same for a handler whose object has to stay.
    Q_INVOKABLE void runGently(int action);

    /// Calls mild<n>() in its place, for a handler that runs while objects come or go.
    Q_INVOKABLE void runMildly(int action);

    /// An event loop in which the function act<n>() is called.
    Q_INVOKABLE void loop(int action);

    Q_INVOKABLE void kill(QObject *object);
    Q_INVOKABLE void killAny(int index);
    Q_INVOKABLE void deleteLater(QObject *object);
    Q_INVOKABLE void disconnect(QObject *object);
    Q_INVOKABLE void reparent(QObject *item, QObject *parent);

    /// A row of the catalogue, and the theme in it.
    Q_INVOKABLE int row(int n) const;
    Q_INVOKABLE QObject *theme(int n) const;

    /// Deletes a theme as native code may, which leaves its row empty.
    Q_INVOKABLE void deleteTheme(int n);
    Q_INVOKABLE void deleteGlobalTheme();

    /// The theme attached to \a object; null if there is none.
    Q_INVOKABLE QObject *themeOf(QObject *object) const;

    /// A new folder with two themes, and the title of the second one.
    Q_INVOKABLE QString folder();
    Q_INVOKABLE QString title() const { return m_folderTitle; }

    /// Writes other values into the current theme's file. reload() has it read at once, save()
    /// leaves that to whoever watches it.
    Q_INVOKABLE void save();
    Q_INVOKABLE void reload();

    /// Takes a value that is read for the reading's sake.
    Q_INVOKABLE void note(const QVariant &) { }

    /// Faults, for the tests of the fuzzer itself.
    Q_INVOKABLE void crash();
    Q_INVOKABLE void leak();
    Q_INVOKABLE void listen();

private:
    friend class Mark;

    struct Entry
    {
        Mark *mark;
        bool isComplete;
    };

    void begin(Mark *mark);
    void complete(Mark *mark);
    void leave(Mark *mark);
    bool mayDelete(QObject *object) const;
    void call(int action);
    static void write(const QString &path, const QByteArray &text);

    const bool m_usesStandIn;
    QPointer<QObject> m_root;
    QTemporaryDir m_files;
    QVector<Entry> m_marks;
    QString m_folderTitle;
    int m_themes = 0;
    int m_folders = 0;
    int m_edits = 0;
    int m_creating = 0;
    int m_depth = 0;
    int m_gentle = 0;
    int m_actionsLeft = 40;
    bool m_isActing = false;
};
