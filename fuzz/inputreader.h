#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstddef>
#include <cstdint>

/// Takes small decisions and texts from the bytes of a fuzzing input, from front to back. An input
/// that is used up goes on giving zeros and empty texts.
class InputReader
{
public:
    InputReader(const std::uint8_t *data, std::size_t size);

    bool atEnd() const;

    /// A number from 0 to \a limit - 1. \a limit is at most 256.
    int below(int limit);
    bool yes();

    /// A text of up to \a limit bytes, whose length is told by the input.
    QByteArray bytes(int limit);

    /// An entry of a table of texts.
    template <std::size_t Size>
    QString oneOf(const char *const (&table)[Size])
    {
        return QString::fromUtf8(table[below(int(Size))]);
    }

private:
    const std::uint8_t *m_next;
    const std::uint8_t *const m_end;
};
