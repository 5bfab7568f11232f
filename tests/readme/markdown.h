#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

/// A Markdown page of the project, as far as tests run what stands in it.
class Markdown
{
public:
    struct Block
    {
        /// The heading that it stands under.
        QString heading;
        /// What follows the fence; empty for a block that is indented.
        QString language;
        QString code;
    };

    /// Reads the page at \a path, relative to the project's root. Ends the process if it can't.
    explicit Markdown(const QString &path);

    /// All blocks of code, in their order.
    QList<Block> blocks() const;
    /// The code of the only block in \a language; empty if there is none, or more than one.
    QString only(const QString &language) const;

    /// The cells of the rows of the table whose first heading is \a firstHeading.
    QList<QStringList> table(const QString &firstHeading) const;

    /// The pieces of \a text between backquotes.
    static QStringList codeIn(const QString &text);

    /// All headings, without their signs.
    QStringList headings() const;

    /// The page without its fenced blocks.
    QString prose() const;

private:
    QString m_prose;
    QStringList m_headings;
    QList<Block> m_blocks;
};
