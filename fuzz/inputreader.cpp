#include "fuzz/inputreader.h"

#include <algorithm>

InputReader::InputReader(const std::uint8_t *data, std::size_t size)
    : m_next(data)
    , m_end(data + size)
{
}

bool InputReader::atEnd() const
{
    return m_next == m_end;
}

int InputReader::below(int limit)
{
    return atEnd() ? 0 : *m_next++ % limit;
}

bool InputReader::yes()
{
    return below(2) == 1;
}

QByteArray InputReader::bytes(int limit)
{
    const int low = below(256);
    const int wanted = (low | below(256) << 8) % (limit + 1);
    const int length = int(std::min<std::ptrdiff_t>(wanted, m_end - m_next));
    QByteArray text(reinterpret_cast<const char *>(m_next), length);
    m_next += length;
    return text;
}
