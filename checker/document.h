#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QJsonObject>
#include <QtCore/QJsonValue>
#include <QtCore/QString>

#include <vector>

struct QJsonParseError;

/// A place in a text as an author counts it, both from 1. Columns are counted in characters.
struct Position
{
    int line = 1;
    int column = 1;
};

/// A part of a text, in bytes: from \a begin to before \a end.
struct Range
{
    int begin = 0;
    int end = 0;
};

/// A JSON value with its place in the text.
struct Node
{
    struct Member;

    /// What Qt reads there. For a member that is written twice, the value that counts.
    QJsonValue value;
    Range range;
    /// The members of an object in the order of the text, including those that a later one of the
    /// same name replaces.
    std::vector<Member> members;

    /// The member that counts under the name \a key; null if there is none, or if this is no
    /// object.
    const Member *member(const QString &key) const;
    const Member *member(QLatin1String key) const;
};

struct Node::Member
{
    QString key;
    Range keyRange;
    Node node;
    /// A later member of the same object has the same name, so this one is lost.
    bool isReplaced = false;
};

/// The text of a theme file with what it holds and where.
///
/// Whether the text can be parsed and what it holds is Qt's answer, as it is for the application;
/// only the places come from another parser, because Qt's does not tell any.
class Document
{
public:
    enum Fault {
        NoFault,
        /// Nothing was read: the file is missing, unreadable or no regular file.
        Unreadable,
        Empty,
        /// The text is in UTF-16 or UTF-32, or has bytes that are no UTF-8.
        BadEncoding,
        SyntaxError,
        /// The text is valid, but it is an array or a plain value.
        NotAnObject
    };

    Document() = default;
    explicit Document(const QByteArray &text);

    /// A text that is not looked into, only for places in it.
    static Document plain(const QByteArray &text);

    /// Reads the file at \a path. Never waits for a pipe or a device.
    static Document read(const QString &path);

    Fault fault() const { return m_fault; }
    /// What is wrong, as a part of a sentence for the author; empty without a fault.
    QString faultText() const { return m_faultText; }
    /// What would mend it; empty if that can't be told.
    QString faultHelp() const { return m_faultHelp; }
    /// Where the fault was noticed.
    Range faultRange() const { return m_faultRange; }

    const QByteArray &text() const { return m_text; }
    bool hasByteOrderMark() const;

    /// What Qt reads from the text; empty if it is no JSON object.
    const QJsonObject &object() const { return m_object; }
    /// The object with the places; empty if the text is no JSON object.
    const Node &root() const { return m_root; }

    /// The value at \a path (member names separated by "/"); null if there is none.
    const Node::Member *find(const QString &path) const;

    Position position(int offset) const;
    /// The word at the column \a column, counted in UTF-16 from 1 as QML does, of the line \a line.
    Range rangeAt(int line, int column) const;

    /// The text of the line \a number, without its end.
    QByteArray line(int number) const;

    /// The line around \a offset or, when it is long, a part of it that begins some characters
    /// before \a offset; how many characters of the line come before the part goes to \a column.
    QString excerpt(int offset, int *column) const;

private:
    /// From where to where the line \a number goes, without its end.
    Range lineRange(int number) const;
    int charactersBefore(int offset) const;

    void setText(const QByteArray &text);
    void parse();
    void setFault(Fault fault, Range range, const QString &text, const QString &help = QString());
    bool findBadEncoding();
    void describeSyntaxError(QJsonParseError error);

    QByteArray m_text;
    QJsonObject m_object;
    Node m_root;
    Fault m_fault = NoFault;
    QString m_faultText;
    QString m_faultHelp;
    Range m_faultRange;
    std::vector<int> m_lineStarts{ 0 };
    /// How many characters come before each block of blockSize bytes: a text may be one long line.
    std::vector<int> m_charactersBefore{ 0 };
};
