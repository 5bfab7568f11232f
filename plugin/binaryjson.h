#pragma once

#include <QtCore/qglobal.h>

#include <array>
#include <cstddef>

/// Qt's binary JSON, laid out at compile time: just what describes a plugin, one flat object.
///
/// A document is the tag "qbjs", the format version 1 and an object. An object is its size in
/// bytes, its number of members (shifted left by one; the lowest bit marks an object), the offset
/// of its member table, the members, and that table of their offsets. A member is a value word,
/// its key and what does not fit into the word. Keys and texts are Latin-1 behind a 16-bit length,
/// padded to whole words. Numbers are little-endian; offsets count from the object's start.
namespace BinaryJson {

/// Writes one document into at most \a Size bytes.
template <std::size_t Size>
class Writer
{
public:
    /// Characters as they stand, outside the document.
    constexpr void raw(const char *characters)
    {
        while (*characters != '\0')
            m_bytes[m_size++] = *characters++;
    }

    constexpr void beginDocument()
    {
        raw("qbjs");
        word(1);
    }

    constexpr void beginObject()
    {
        m_object = m_size;
        m_size += objectHeaderSize;
    }

    constexpr void endObject()
    {
        const std::size_t table = m_size;
        for (std::size_t i = 0; i < m_memberCount; ++i)
            word(m_members[i]);
        const std::size_t end = m_size;
        m_size = m_object;
        objectHeader(end - m_object, m_memberCount, table - m_object);
        m_size = end;
    }

    constexpr void string(const char *key, const char *value)
    {
        member(String | inlined, key, offset() + wordSize + textSize(key));
        text(value);
    }

    constexpr void boolean(const char *key, bool value) { member(Bool, key, value ? 1 : 0); }

    /// A whole number below 2^26.
    constexpr void number(const char *key, quint32 value) { member(Double | inlined, key, value); }

    constexpr void emptyObject(const char *key)
    {
        member(Object, key, offset() + wordSize + textSize(key));
        objectHeader(objectHeaderSize, 0, 0);
    }

    constexpr std::size_t size() const { return m_size; }
    constexpr const std::array<char, Size> &bytes() const { return m_bytes; }

private:
    static constexpr std::size_t wordSize = 4;
    static constexpr std::size_t objectHeaderSize = 3 * wordSize;
    static constexpr std::size_t mostMembers = 8;

    // The lower five bits of a value word; the value or its offset stands above them.
    static constexpr quint32 Bool = 1;
    static constexpr quint32 Double = 2;
    static constexpr quint32 String = 3;
    static constexpr quint32 Object = 5;
    static constexpr quint32 inlined = 1u << 3; // a number in the word itself, or Latin-1 text
    static constexpr quint32 latin1Key = 1u << 4;
    static constexpr int valueShift = 5;

    static constexpr std::size_t length(const char *characters)
    {
        std::size_t count = 0;
        while (characters[count] != '\0')
            ++count;
        return count;
    }

    static constexpr std::size_t textSize(const char *characters)
    {
        return (2 + length(characters) + wordSize - 1) / wordSize * wordSize;
    }

    constexpr std::size_t offset() const { return m_size - m_object; }

    constexpr void word(std::size_t value)
    {
        for (std::size_t i = 0; i < wordSize; ++i)
            m_bytes[m_size++] = char(quint8(value >> (8 * i)));
    }

    constexpr void text(const char *characters)
    {
        const std::size_t end = m_size + textSize(characters);
        const std::size_t count = length(characters);
        m_bytes[m_size++] = char(quint8(count));
        m_bytes[m_size++] = char(quint8(count >> 8));
        raw(characters);
        m_size = end;
    }

    constexpr void member(quint32 typeBits, const char *key, std::size_t value)
    {
        m_members[m_memberCount++] = offset();
        word(typeBits | latin1Key | value << valueShift);
        text(key);
    }

    constexpr void objectHeader(std::size_t size, std::size_t members, std::size_t table)
    {
        word(size);
        word(members << 1 | 1);
        word(table);
    }

    std::array<char, Size> m_bytes = {};
    std::size_t m_size = 0;
    std::size_t m_object = 0;
    std::array<std::size_t, mostMembers> m_members = {};
    std::size_t m_memberCount = 0;
};

} // namespace BinaryJson
