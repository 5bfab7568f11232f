#pragma once

#include <QtCore/QByteArray>

#include <random>

/// Makes up JSON texts: valid ones, ones that only Qt takes, and broken ones.
class RandomJson
{
public:
    explicit RandomJson(unsigned seed)
        : m_random(seed)
    {
    }

    /// An object, with blanks and line ends between its tokens.
    QByteArray object(int depth = 4);

    /// The text with some of its bytes removed, repeated or replaced.
    QByteArray mutated(QByteArray text);

    /// A number from 0 to \a limit - 1.
    int below(int limit);

private:
    QByteArray blank();
    QByteArray string();
    QByteArray number();
    QByteArray value(int depth);
    template <std::size_t Size>
    const char *oneOf(const char *const (&table)[Size])
    {
        return table[below(int(Size))];
    }

    std::mt19937 m_random;
};
