#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QSet>
#include <QtCore/QVector>

#include <random>

/// Writes a random QML program: a tree of objects that show the theme, with bindings and handlers,
/// and steps that change it. A seed gives the same program on every machine.
///
/// The program runs on a Stage, which it knows as "fuzz". Its functions step0(), step1(), … are to
/// be called one after another; its handlers ask the stage for act0(), act1(), …, in whose place it
/// calls mild0(), mild1(), … while objects are being created. Some of them may be missing.
/// Where it says %PROBE%, a property is to be bound to each value of the theme.
class ProgramWriter
{
public:
    /// \param dropped numbers of parts (objects with all that is in them, bindings, handlers,
    ///        statements) to leave out. What refers to an object left out is left out, too; all
    ///        else stays as it is.
    explicit ProgramWriter(quint64 seed, const QSet<int> &dropped = QSet<int>());

    QByteArray text() const { return m_text; }

    /// How many parts there are, those left out included.
    int partCount() const { return m_parts; }

    static const int stepLimit = 8;
    static const int actionCount = 8;
    static const int mildActionCount = 3;

private:
    enum Kind {
        Plain,
        Item,
        Text,
        Rectangle,
        Loader,
        Repeater,
        ListView,
        Popup,
        Menu,
        Instantiator,
        Window,
        TabBar,
        SwipeView,
        StackView,
        KindCount,
        TabButton,
        MenuItem
    };

    /// Who may delete an object while the program runs.
    enum Owner { Anybody, View };

    struct Object
    {
        Kind kind;
        QByteArray id;
        QByteArray container;
        bool isPresent;
    };

    int number(int limit);
    bool chance(int percent);
    template <typename Value, std::size_t count>
    const Value &any(const Value (&values)[count]);
    bool isKept();
    static QByteArray indented(const QByteArray &text);

    QByteArray program();
    QByteArray function(const QByteArray &name, int index);
    QByteArray object(Kind kind, int depth, const QByteArray &container);
    QByteArray componentObject(Kind kind, int depth, Owner owner);
    QByteArray content(Kind kind, int depth, const QByteArray &id);
    QByteArray children(int depth);
    QByteArray bindings();
    QByteArray classnames();
    QByteArray handlers();
    QByteArray handlerBody();
    QByteArray outerConnections();
    QByteArray makers();
    QByteArray statements(int count);
    QByteArray statement();
    QByteArray themeStatement();
    QByteArray listeningStatement();
    QByteArray objectStatement();
    QByteArray containerStatement();
    QByteArray deathStatement();
    QByteArray makerStatement();
    const Object *anyObject();
    const Object *anyObject(const QSet<int> &kinds);

    std::mt19937_64 m_random;
    QSet<int> m_dropped;
    int m_parts = 0;
    int m_ids = 0;
    int m_objectsLeft = 0;
    int m_absentDepth = 0;
    int m_componentDepth = 0;
    int m_makerCount = 0;
    QVector<QByteArray> m_heardProperties;
    bool m_refersToAbsent = false;
    bool m_isInMaker = false;
    bool m_isMild = false;
    QVector<Object> m_objects;
    QByteArray m_text;
};
