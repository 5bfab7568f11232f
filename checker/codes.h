#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>

enum class Severity {
    /// A matter of taste or of the machine.
    Note,
    /// The theme comes to be as written, but not as anyone would want it.
    Warning,
    /// The theme, or a value of it, does not come to be as written.
    Error
};

/// What the checker finds.
enum class Code {
    SyntaxError,
    NotUtf8,
    EmptyFile,
    NotAnObject,
    ByteOrderMark,
    DuplicateKey,
    MissingTitle,
    EmptyTitle,
    DuplicateTitle,
    SimilarTitles,
    UnreadableFile,
    HiddenFile,
    OtherExtension,
    UnknownParent,
    ExtendsItself,
    ExtendsRing,
    ParentTooLate,
    ParentLeftOut,
    GlobalDiscardsParent,
    UnknownKey,
    MisplacedKey,
    WrongType,
    NotAColor,
    AlphaLast,
    AlphaDropped,
    PaletteColor,
    BadRadius,
    ClassRadius,
    EmptyScope,
    UnmatchableClass,
    UnevenClass,
    BoldWithoutEffect,
    BadFontSize,
    FontWithoutSize,
    FontsWithoutMain,
    UnknownWeight,
    FamilyNotInstalled,
    UnknownCapitalization,
    HeadingFromAlternate,
    LowContrast,
    StyleError,
    DuplicateStyle,
    StyleWithoutBase,
    StyleOfUnknownClass,
    StyleColor,
    FontFileRefused
};

inline auto qHash(Code code, decltype(::qHash(0)) seed = 0)
{
    return ::qHash(int(code), seed);
}

/// What is known of a code. Its page stands in docs/checker-codes.md.
struct CodeInfo
{
    Code code;
    QString name;
    /// The gravest that its problems have; some of them are less grave.
    Severity severity;
    QString summary;
};

namespace Codes {

/// All codes, in the order in which they are explained.
const QVector<CodeInfo> &all();

const CodeInfo &info(Code code);

/// What is told of it, in Markdown: the part of docs/checker-codes.md below its heading.
QString page(Code code);

/// The same as plain text, the examples labelled and indented.
QString text(Code code);

/// The code that is called \a name; null if there is none.
const CodeInfo *find(const QString &name);

QStringList names();

QString severityName(Severity severity);

} // namespace Codes
