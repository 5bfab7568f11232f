// Rules for the document as a text.

#include "checker/rules.h"
#include "checker/words.h"

#include <QtCore/QHash>

namespace {

struct FaultCode
{
    Document::Fault fault;
    Code code;
    const char *consequence;
};

const FaultCode faultCodes[] = {
    { Document::Unreadable, Code::UnreadableFile, "the theme is left out" },
    { Document::Empty, Code::EmptyFile, "the theme is left out" },
    { Document::BadEncoding, Code::NotUtf8, "the theme has no title and the default look" },
    { Document::SyntaxError, Code::SyntaxError, "the theme has no title and the default look" },
    { Document::NotAnObject, Code::NotAnObject, "the theme has no title and the default look" },
};

void reportFault(const Document &document, Findings &findings)
{
    for (const FaultCode &entry : faultCodes) {
        if (entry.fault != document.fault())
            continue;
        QStringList help;
        if (!document.faultHelp().isEmpty())
            help.append(document.faultHelp());
        findings.add(entry.code, document.faultRange(),
                     QStringLiteral("%1, so %2")
                             .arg(document.faultText(), QLatin1String(entry.consequence)),
                     help);
    }
}

QHash<QString, const Node::Member *> membersThatCount(const Node &object)
{
    QHash<QString, const Node::Member *> members;
    for (const Node::Member &member : object.members) {
        if (!member.isReplaced)
            members.insert(member.key, &member);
    }
    return members;
}

void reportDuplicates(const Document &document, const Node &object, Findings &findings)
{
    QHash<QString, const Node::Member *> last;
    for (const Node::Member &member : object.members) {
        if (member.isReplaced) {
            if (last.isEmpty())
                last = membersThatCount(object);
            const Position again = document.position(last.value(member.key)->keyRange.begin);
            const Position here = document.position(member.keyRange.begin);
            findings.add(Code::DuplicateKey, member.keyRange,
                         QStringLiteral("%1 is written again %2, so this value is lost")
                                 .arg(Words::quoted(member.key),
                                      again.line == here.line
                                              ? QStringLiteral("in the same line")
                                              : QStringLiteral("in line %1").arg(again.line)));
        }
        reportDuplicates(document, member.node, findings);
    }
}

void checkTitle(const ThemeContext &context, Findings &findings)
{
    const Node::Member *title = context.document.root().member(QLatin1String("title"));
    if (!title) {
        findings.add(Code::MissingTitle, Range{ 0, 1 },
                     QStringLiteral("the theme has no `title`, so nothing can find it"),
                     QStringLiteral("add `\"title\": \"…\"`"));
    } else if (title->node.value.isString() && title->node.value.toString().isEmpty()) {
        findings.add(Code::EmptyTitle, title->node.range,
                     QStringLiteral("the `title` is empty, so nothing can find the theme"));
    }
}

} // namespace

void checkDocument(const ThemeContext &context, Findings &findings)
{
    const Document &document = context.document;
    if (document.hasByteOrderMark()) {
        findings.add(Code::ByteOrderMark, Range{ 0, 3 },
                     QStringLiteral("the file begins with a byte order mark, which other readers "
                                    "of JSON refuse"),
                     QStringLiteral("save it in UTF-8 without a mark (BOM)"));
    }
    if (document.fault() != Document::NoFault) {
        reportFault(document, findings);
        return;
    }
    reportDuplicates(document, document.root(), findings);
    checkTitle(context, findings);
}
