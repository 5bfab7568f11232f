#include "checker/document.h"

#include "checker/positions.h"
#include "checker/syntaxerror.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>

#include <algorithm>

namespace {

template <typename Text>
const Node::Member *memberCalled(const std::vector<Node::Member> &members, const Text &key)
{
    for (const Node::Member &member : members) {
        if (!member.isReplaced && member.key == key)
            return &member;
    }
    return nullptr;
}

/// Enters the values into the nodes that stand for them.
void assign(Node *node, const QJsonValue &value)
{
    node->value = value;
    if (node->members.empty())
        return;
    const QJsonObject object = value.toObject();
    for (Node::Member &member : node->members)
        assign(&member.node, object.value(member.key));
}

const int longestExcerpt = 100;
const int excerptBefore = 60;

const int blockSize = 1024;

bool isContinuation(char byte)
{
    return (uchar(byte) & 0xc0) == 0x80;
}

bool isWide(const QByteArray &text)
{
    for (const QByteArray &mark :
         { QByteArrayLiteral("\xff\xfe"), QByteArrayLiteral("\xfe\xff") }) {
        if (text.startsWith(mark))
            return true;
    }
    // Half the bytes of plain words in UTF-16 are zero.
    return text.size() >= 2 && (text.at(0) == 0 || text.at(1) == 0);
}

} // namespace

const Node::Member *Node::member(const QString &key) const
{
    return memberCalled(members, key);
}

const Node::Member *Node::member(QLatin1String key) const
{
    return memberCalled(members, key);
}

Document::Document(const QByteArray &text)
{
    setText(text);
    parse();
}

Document Document::plain(const QByteArray &text)
{
    Document document;
    document.setText(text);
    return document;
}

Document Document::read(const QString &path)
{
    const auto unreadable = [](const QString &why) {
        Document document;
        document.setFault(Unreadable, Range(), why);
        return document;
    };
    const QFileInfo info(path);
    if (info.isDir())
        return unreadable(QStringLiteral("this is a folder, not a file"));
    if (!info.exists())
        return unreadable(info.isSymLink() ? QStringLiteral("the link leads nowhere")
                                           : QStringLiteral("there is no such file"));
    if (!info.isFile())
        return unreadable(QStringLiteral("this is a pipe or a device, not a file"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return unreadable(QStringLiteral("the file can't be opened"));
    const QByteArray text = file.readAll();
    if (file.error() != QFile::NoError)
        return unreadable(QStringLiteral("the file can't be read to its end"));
    return Document(text);
}

bool Document::hasByteOrderMark() const
{
    return m_text.startsWith("\xef\xbb\xbf");
}

const Node::Member *Document::find(const QString &path) const
{
    const Node *node = &m_root;
    const Node::Member *member = nullptr;
    const QStringList keys = path.split(QLatin1Char('/'));
    for (const QString &key : keys) {
        member = node->member(key);
        if (!member)
            return nullptr;
        node = &member->node;
    }
    return member;
}

Position Document::position(int offset) const
{
    const auto next = std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), offset);
    Position position;
    position.line = int(next - m_lineStarts.begin());
    int begin = *std::prev(next);
    if (begin == 0 && hasByteOrderMark())
        begin = std::min(offset, 3);
    position.column += charactersBefore(offset) - charactersBefore(begin);
    return position;
}

int Document::charactersBefore(int offset) const
{
    const int end = std::min(offset, int(m_text.size()));
    const int block = end / blockSize;
    int characters = m_charactersBefore[size_t(block)];
    for (int i = block * blockSize; i < end; ++i) {
        if (!isContinuation(m_text.at(i)))
            ++characters;
    }
    return characters;
}

Range Document::rangeAt(int line, int column) const
{
    if (line < 1 || line > int(m_lineStarts.size()))
        return Range();
    const QByteArray bytes = this->line(line);
    // With its size: a text may have zero bytes in it.
    const QString text = QString::fromUtf8(bytes.constData(), int(bytes.size()));
    const int first = std::clamp(column - 1, 0, int(text.size()));
    int last = first;
    while (last < text.size()
           && (text.at(last).isLetterOrNumber() || text.at(last) == QLatin1Char('_')))
        ++last;
    const int begin = m_lineStarts[size_t(line - 1)] + int(text.left(first).toUtf8().size());
    return Range{ begin, begin + int(text.mid(first, last - first).toUtf8().size()) };
}

QByteArray Document::line(int number) const
{
    if (number < 1 || number > int(m_lineStarts.size()))
        return QByteArray();
    const Range range = lineRange(number);
    return m_text.mid(range.begin, range.end - range.begin);
}

Range Document::lineRange(int number) const
{
    Range range;
    range.begin = m_lineStarts[size_t(number - 1)];
    range.end = number < int(m_lineStarts.size()) ? m_lineStarts[size_t(number)] - 1
                                                  : int(m_text.size());
    if (range.end > range.begin && m_text.at(range.end - 1) == '\r')
        --range.end;
    if (range.begin == 0 && hasByteOrderMark())
        range.begin = 3;
    return range;
}

QString Document::excerpt(int offset, int *column) const
{
    const Position place = position(offset);
    const Range line = lineRange(place.line);
    const int length = charactersBefore(line.end) - charactersBefore(line.begin);
    *column = 0;
    Range part = line;
    if (length > longestExcerpt) {
        const int before = place.column - 1;
        *column = std::clamp(before - excerptBefore, 0, length - longestExcerpt);
        part.begin = std::min(offset, int(m_text.size()));
        for (int left = before - *column; left > 0;) {
            if (!isContinuation(m_text.at(--part.begin)))
                --left;
        }
        part.end = part.begin;
        for (int left = longestExcerpt; part.end < line.end; ++part.end) {
            if (!isContinuation(m_text.at(part.end)) && --left < 0)
                break;
        }
    }
    return QString::fromUtf8(m_text.constData() + part.begin, part.end - part.begin);
}

void Document::setText(const QByteArray &text)
{
    m_text = text;
    for (auto i = text.indexOf('\n'); i >= 0; i = text.indexOf('\n', i + 1))
        m_lineStarts.push_back(int(i) + 1);
    int characters = 0;
    for (int i = 0; i < int(text.size()); ++i) {
        if (!isContinuation(text.at(i)))
            ++characters;
        if ((i + 1) % blockSize == 0)
            m_charactersBefore.push_back(characters);
    }
}

void Document::setFault(Fault fault, Range range, const QString &text, const QString &help)
{
    m_fault = fault;
    m_faultRange = range;
    m_faultText = text;
    m_faultHelp = help;
}

void Document::parse()
{
    if (m_text.isEmpty()) {
        setFault(Empty, Range(), QStringLiteral("the file is empty"));
        return;
    }
    QJsonParseError error;
    const QJsonDocument parsed = QJsonDocument::fromJson(m_text, &error);
    if (error.error != QJsonParseError::NoError) {
        if (!findBadEncoding())
            describeSyntaxError(error);
        return;
    }
    if (!parsed.isObject()) {
        const int begin = int(m_text.indexOf('['));
        setFault(NotAnObject, Range{ begin, begin + 1 },
                 QStringLiteral("the document is a list, not an object"));
        return;
    }
    m_object = parsed.object();
    if (Positions::read(m_text, &m_root).offset >= 0) {
        m_root = Node();
        Positions::readLeniently(m_text, &m_root);
    }
    assign(&m_root, m_object);
}

void Document::describeSyntaxError(QJsonParseError qtError)
{
    const QByteArray trimmed = m_text.trimmed();
    // Plain values are JSON, but Qt reads documents that are lists or objects only.
    if (Positions::read(m_text, nullptr).offset < 0 && !trimmed.startsWith('{')
        && !trimmed.startsWith('[')) {
        const int begin = int(m_text.indexOf(trimmed));
        setFault(NotAnObject, Range{ begin, begin + int(trimmed.size()) },
                 QStringLiteral("the document is a plain value, not an object"));
        return;
    }
    const ::SyntaxError error = ::SyntaxError::find(m_text, qtError);
    setFault(SyntaxError, error.range, error.text, error.help);
}

/// \return whether the text is in another encoding than UTF-8.
bool Document::findBadEncoding()
{
    if (isWide(m_text)) {
        setFault(BadEncoding, Range{ 0, 1 }, QStringLiteral("the text is not in UTF-8"),
                 QStringLiteral("it seems to be in UTF-16; save it in UTF-8"));
        return true;
    }
    const int badByte = Positions::firstBadByte(m_text);
    if (badByte < 0)
        return false;
    setFault(BadEncoding, Range{ badByte, badByte + 1 }, QStringLiteral("the text is not in UTF-8"),
             QStringLiteral("save it in UTF-8"));
    return true;
}
