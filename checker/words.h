#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

/// Small helps for sentences about keys and values.
namespace Words {

/// \a text in backquotes, cut short when it is long.
QString quoted(const QString &text);

/// \a texts in backquotes, separated by commas; only the first \a limit of them.
QString quotedList(const QStringList &texts, int limit = 8);

/// The one of \a candidates that someone who wrote \a word may have meant; empty if none is near.
/// Letter case, hyphens, underscores and spaces hardly count.
QString nearest(const QString &word, const QStringList &candidates);

/// \a text with a mark in the place of each character that could control a terminal.
QString harmless(const QString &text);

/// \a sentence as it goes on behind the name of a program and a colon: without a capital and a full
/// stop.
QString unsentenced(QString sentence);

/// \a number without needless digits.
QString number(double number);

/// "1 theme", "2 themes".
QString counted(int count, const QString &noun);

} // namespace Words
