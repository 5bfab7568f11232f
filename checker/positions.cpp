#include "checker/positions.h"

#include <QtCore/QHash>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <cstring>

namespace {

/// Builds the tree of nodes from the events of the parser, whose stream tells where each one ended.
class TreeBuilder
{
public:
    /// \a stream reads a text of the same shape as \a text, which is where keys are taken from.
    TreeBuilder(const QByteArray &text, const rapidjson::MemoryStream &stream, Node *root)
        : m_text(text)
        , m_stream(stream)
        , m_root(root)
    {
    }

    bool Null() { return addScalar(); }
    bool Bool(bool) { return addScalar(); }
    bool Int(int) { return addScalar(); }
    bool Uint(unsigned) { return addScalar(); }
    bool Int64(int64_t) { return addScalar(); }
    bool Uint64(uint64_t) { return addScalar(); }
    bool Double(double) { return addScalar(); }
    bool RawNumber(const char *, rapidjson::SizeType, bool) { return addScalar(); }
    bool String(const char *, rapidjson::SizeType, bool) { return addScalar(); }

    bool Key(const char *, rapidjson::SizeType, bool)
    {
        const Range range = takeToken();
        Node *parent = m_open.back();
        if (!parent)
            return true;
        Node::Member member;
        member.keyRange = range;
        member.key = keyIn(range);
        parent->members.push_back(std::move(member));
        return true;
    }

    bool StartObject() { return open(place()); }
    // Elements of arrays have no place: nothing of theirs is ever reported.
    bool StartArray() { return open(place(), true); }

    bool EndObject(rapidjson::SizeType)
    {
        Node *object = m_open.back();
        if (object)
            markReplaced(object);
        return close(object);
    }

    bool EndArray(rapidjson::SizeType) { return close(m_arrays.takeLast()); }

private:
    /// The token that the parser has just passed.
    Range takeToken()
    {
        Range range;
        range.begin = m_tokenEnd;
        range.end = int(m_stream.Tell());
        while (range.begin < range.end && std::strchr(" \t\r\n,:", m_text.at(range.begin)))
            ++range.begin;
        m_tokenEnd = range.end;
        return range;
    }

    /// The key as Qt reads it, which takes escapes in its own way.
    QString keyIn(Range range) const
    {
        const QByteArray token = m_text.mid(range.begin, range.end - range.begin);
        if (!token.contains('\\'))
            return QString::fromUtf8(token.constData() + 1, token.size() - 2);
        return QJsonDocument::fromJson('[' + token + ']').array().at(0).toString();
    }

    /// Where the value that comes next belongs; null for the elements of an array.
    Node *place() const
    {
        if (m_open.isEmpty())
            return m_root;
        Node *parent = m_open.back();
        return parent ? &parent->members.back().node : nullptr;
    }

    bool addScalar()
    {
        const Range range = takeToken();
        if (Node *node = place())
            node->range = range;
        return true;
    }

    bool open(Node *node, bool isArray = false)
    {
        // The bracket itself is not passed yet.
        const int begin = int(m_stream.Tell());
        m_tokenEnd = begin + 1;
        if (node)
            node->range.begin = begin;
        if (isArray)
            m_arrays.append(node);
        m_open.append(isArray ? nullptr : node);
        return true;
    }

    bool close(Node *node)
    {
        m_tokenEnd = int(m_stream.Tell()) + 1;
        if (node)
            node->range.end = m_tokenEnd;
        m_open.removeLast();
        return true;
    }

    static void markReplaced(Node *object)
    {
        QHash<QString, int> last;
        for (int i = 0; i < int(object->members.size()); ++i) {
            const auto entry = last.find(object->members[size_t(i)].key);
            if (entry == last.end()) {
                last.insert(object->members[size_t(i)].key, i);
            } else {
                object->members[size_t(*entry)].isReplaced = true;
                *entry = i;
            }
        }
    }

    const QByteArray m_text;
    const rapidjson::MemoryStream &m_stream;
    Node *m_root;
    /// The objects around the next value; null for an array, and for what is inside one.
    QVector<Node *> m_open;
    QVector<Node *> m_arrays;
    int m_tokenEnd = 0;
};

// Not recursive: the text may nest deeper than the stack.
const unsigned parserFlags = rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;

template <typename Handler>
rapidjson::ParseResult parse(rapidjson::MemoryStream &stream, Handler &handler)
{
    rapidjson::Reader reader;
    return reader.Parse<parserFlags>(stream, handler);
}

/// Where Qt takes \a text for the end of a number or a word.
bool endsWord(char character)
{
    return std::strchr(" \t\r\n,:{}[]\"", character);
}

/// \a text with what only Qt understands replaced by something plain of the same length.
QByteArray madePlain(QByteArray text)
{
    bool inString = false;
    for (int i = 0; i < text.size(); ++i) {
        char &character = text.data()[i];
        if (character == '"') {
            inString = !inString;
        } else if (inString && character == '\\' && i + 1 < text.size()) {
            character = 'x';
            text.data()[++i] = 'x';
        } else if (inString && uchar(character) < ' ') {
            character = ' ';
        } else if (!inString && std::strchr("-.0123456789", character) && character) {
            for (; i < text.size() && !endsWord(text.at(i)); ++i)
                text.data()[i] = '1';
            --i;
        }
    }
    return text;
}

/// The length of the mark at the beginning that some programs write before UTF-8.
int markLength(const QByteArray &text)
{
    return text.startsWith("\xef\xbb\xbf") ? 3 : 0;
}

/// Blanks take the mark's place, so that all offsets stay.
QByteArray withoutMark(QByteArray text)
{
    return text.replace(0, markLength(text), QByteArray(markLength(text), ' '));
}

/// Reads \a plain, a form of \a text that the parser understands.
Positions::Failure read(const QByteArray &plain, const QByteArray &text, Node *root)
{
    rapidjson::MemoryStream stream(plain.constData(), size_t(plain.size()));
    rapidjson::ParseResult result;
    if (root) {
        TreeBuilder builder(text, stream, root);
        result = parse(stream, builder);
    } else {
        rapidjson::BaseReaderHandler<> nobody;
        result = parse(stream, nobody);
    }
    Positions::Failure failure;
    if (result.IsError()) {
        failure.offset = int(result.Offset());
        failure.code = result.Code();
    }
    return failure;
}

} // namespace

Positions::Failure Positions::read(const QByteArray &text, Node *root)
{
    return ::read(withoutMark(text), text, root);
}

Positions::Failure Positions::readLeniently(const QByteArray &text, Node *root)
{
    return ::read(madePlain(withoutMark(text)), text, root);
}

int Positions::firstBadByte(const QByteArray &text)
{
    // Decodes without building anything.
    struct Nowhere
    {
        void Put(char) { }
    };
    rapidjson::MemoryStream stream(text.constData(), size_t(text.size()));
    Nowhere nowhere;
    while (stream.Tell() < size_t(text.size())) {
        const size_t begin = stream.Tell();
        if (!rapidjson::UTF8<>::Validate(stream, nowhere))
            return int(begin);
    }
    return -1;
}
