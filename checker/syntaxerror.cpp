#include "checker/syntaxerror.h"

#include "checker/positions.h"
#include "checker/words.h"

#include <rapidjson/error/error.h>

#include <algorithm>
#include <cstring>

namespace {

bool isBlank(char character)
{
    return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

bool isWordCharacter(char character)
{
    return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'z')
            || (character >= 'A' && character <= 'Z') || uchar(character) >= 0x80
            || (character && std::strchr("_-+.#", character));
}

/// The word, or the one character, at \a offset.
Range tokenAt(const QByteArray &text, int offset)
{
    Range range{ offset, offset };
    if (offset < text.size() && text.at(offset) == '"') {
        const auto close = text.indexOf('"', offset + 1);
        const auto lineEnd = text.indexOf('\n', offset);
        if (close >= 0 && (lineEnd < 0 || close < lineEnd))
            range.end = int(close) + 1;
    }
    while (range.end < text.size() && isWordCharacter(text.at(range.end)))
        ++range.end;
    range.end = std::max(range.end, std::min(offset + 1, int(text.size())));
    return range;
}

/// The word that \a range is the end of, or stands right behind.
Range wordAround(const QByteArray &text, Range range)
{
    int begin = range.begin;
    while (begin > 0 && isWordCharacter(text.at(begin - 1)))
        --begin;
    return begin < range.begin ? tokenAt(text, begin) : range;
}

/// The offset of the last character before \a offset that is not blank; -1 if there is none.
int lastBefore(const QByteArray &text, int offset)
{
    do {
        --offset;
    } while (offset >= 0 && isBlank(text.at(offset)));
    return offset;
}

QString cut(const QByteArray &text, Range range)
{
    return Words::quoted(
            QString::fromUtf8(text.constData() + range.begin, range.end - range.begin));
}

/// What people write in place of JSON, whatever was expected there.
bool describeForeign(const QByteArray &text, SyntaxError *error)
{
    const char character = text.at(error->range.begin);
    const bool isColor = character == '#' && error->range.end - error->range.begin > 1;
    if (character == '/' || (character == '#' && !isColor)) {
        error->text = QStringLiteral("JSON has no comments");
        error->help = QStringLiteral("remove the comment");
        return true;
    }
    if (character == '\'') {
        error->text = QStringLiteral("a single quote");
        error->help = QStringLiteral("names and texts stand in double quotes");
        return true;
    }
    return false;
}

bool describeTrailingComma(const QByteArray &text, SyntaxError *error)
{
    const char bracket = text.at(error->range.begin);
    const int before = lastBefore(text, error->range.begin);
    if ((bracket != '}' && bracket != ']') || before < 0 || text.at(before) != ',')
        return false;
    error->text = QStringLiteral("a comma before `%1`").arg(QLatin1Char(bracket));
    error->help = QStringLiteral("remove the comma");
    error->range = Range{ before, before + 1 };
    return true;
}

void describeMissingName(const QByteArray &text, SyntaxError *error)
{
    if (describeForeign(text, error) || describeTrailingComma(text, error))
        return;
    if (text.at(error->range.begin) == ',') {
        error->text = QStringLiteral("a comma too many");
        return;
    }
    error->text = QStringLiteral("%1 where the name of a member is expected")
                          .arg(cut(text, error->range));
    if (isWordCharacter(text.at(error->range.begin)))
        error->help = QStringLiteral("names stand in double quotes");
}

void describeMissingValue(const QByteArray &text, SyntaxError *error)
{
    if (describeForeign(text, error) || describeTrailingComma(text, error))
        return;
    error->range = wordAround(text, error->range);
    const QString found = cut(text, error->range);
    error->text = QStringLiteral("%1 where a value is expected").arg(found);
    const QString lower = found.toLower();
    for (const char *word : { "`true`", "`false`", "`null`" }) {
        if (lower == QLatin1String(word)) {
            error->help = QStringLiteral("write %1").arg(QLatin1String(word));
            return;
        }
    }
    if (isWordCharacter(text.at(error->range.begin)))
        error->help = QStringLiteral("texts stand in double quotes");
}

void describeMissingComma(const QByteArray &text, SyntaxError *error, char bracket)
{
    if (describeForeign(text, error))
        return;
    const int before = lastBefore(text, error->range.begin);
    const char found = text.at(error->range.begin);
    if (found == '"' || found == '{' || found == '[') {
        error->text = QStringLiteral("a comma is missing between two members");
        if (bracket == ']')
            error->text = QStringLiteral("a comma is missing between two values");
        // Where it belongs, which may be lines before.
        error->range = Range{ before + 1, before + 1 };
        return;
    }
    if (found >= '0' && found <= '9' && text.at(before) == '0') {
        error->text = QStringLiteral("a number that begins with 0");
        error->range.begin = before;
        return;
    }
    error->text = QStringLiteral("%1 where a comma or `%2` is expected")
                          .arg(cut(text, error->range), QString(QLatin1Char(bracket)));
}

void describeEnd(const QByteArray &text, SyntaxError *error)
{
    // The last bracket that nothing closes.
    QVector<int> open;
    bool inString = false;
    int stringBegin = 0;
    for (int i = 0; i < text.size(); ++i) {
        const char character = text.at(i);
        if (character == '"') {
            inString = !inString;
            stringBegin = i;
        } else if (inString && character == '\\') {
            ++i;
        } else if (!inString && (character == '{' || character == '[')) {
            open.append(i);
        } else if (!inString && (character == '}' || character == ']') && !open.isEmpty()) {
            open.removeLast();
        }
    }
    if (inString) {
        error->text = QStringLiteral("a text that is never closed");
        error->help = QStringLiteral("its closing `\"` is missing");
        error->range = Range{ stringBegin, stringBegin + 1 };
        return;
    }
    const int last = lastBefore(text, int(text.size()));
    error->range = Range{ last + 1, last + 1 };
    if (open.isEmpty()) {
        error->text = QStringLiteral("the file holds no value");
        return;
    }
    const bool isObject = text.at(open.last()) == '{';
    error->text = QStringLiteral("the text ends before the %1 of line %2 is closed")
                          .arg(isObject ? QStringLiteral("object") : QStringLiteral("list"))
                          .arg(text.left(open.last()).count('\n') + 1);
    error->help =
            QStringLiteral("its closing `%1` is missing").arg(QLatin1Char(isObject ? '}' : ']'));
}

void describeNumber(const QByteArray &text, SyntaxError *error)
{
    error->range = wordAround(text, error->range);
    error->text = QStringLiteral("%1 is no number that can be read").arg(cut(text, error->range));
}

void describe(const QByteArray &text, int code, SyntaxError *error)
{
    const bool isAtEnd = error->range.begin >= text.size();
    switch (code) {
    case rapidjson::kParseErrorStringMissQuotationMark:
        describeEnd(text, error);
        return;
    case rapidjson::kParseErrorDocumentRootNotSingular:
        if (!describeForeign(text, error))
            error->text =
                    QStringLiteral("%1 after the end of the document").arg(cut(text, error->range));
        return;
    case rapidjson::kParseErrorNumberTooBig:
    case rapidjson::kParseErrorNumberMissFraction:
    case rapidjson::kParseErrorNumberMissExponent:
        describeNumber(text, error);
        return;
    case rapidjson::kParseErrorStringUnicodeEscapeInvalidHex:
        error->text = QStringLiteral("an escape that is not `\\u` with four hexadecimal digits");
        error->range.end = std::min(error->range.begin + 2, int(text.size()));
        return;
    default:
        break;
    }
    if (isAtEnd) {
        describeEnd(text, error);
        return;
    }
    switch (code) {
    case rapidjson::kParseErrorObjectMissName:
        describeMissingName(text, error);
        return;
    case rapidjson::kParseErrorObjectMissColon:
        error->text = QStringLiteral("%1 where a colon is expected").arg(cut(text, error->range));
        error->help = QStringLiteral("a colon stands between the name of a member and its value");
        return;
    case rapidjson::kParseErrorObjectMissCommaOrCurlyBracket:
        describeMissingComma(text, error, '}');
        return;
    case rapidjson::kParseErrorArrayMissCommaOrSquareBracket:
        describeMissingComma(text, error, ']');
        return;
    default:
        describeMissingValue(text, error);
        return;
    }
}

} // namespace

SyntaxError SyntaxError::find(const QByteArray &text, QJsonParseError qtError)
{
    SyntaxError error;
    // Qt's parser takes more than the standard, so the standard's first offence need not be what
    // Qt refuses.
    const Positions::Failure strict = Positions::read(text, nullptr);
    const Positions::Failure lenient = Positions::readLeniently(text, nullptr);
    const bool isLineEndInText = strict.offset >= 0
            && strict.code == rapidjson::kParseErrorStringEscapeInvalid
            && strict.offset < text.size()
            && (text.at(strict.offset) == '\n' || text.at(strict.offset) == '\r');
    if (isLineEndInText && lenient.offset > strict.offset) {
        // Qt would have the text go on up to the next quote, where nobody would look.
        const int begin = int(text.lastIndexOf('"', strict.offset));
        error.range = Range{ begin, strict.offset };
        error.text = QStringLiteral("a text that is not closed in its line");
        error.help = QStringLiteral("its closing `\"` is missing");
        return error;
    }
    const Positions::Failure &failure = lenient.offset >= 0 ? lenient : strict;
    if (qtError.error == QJsonParseError::DeepNesting || failure.offset < 0) {
        error.range = tokenAt(text, std::clamp(qtError.offset - 1, 0, int(text.size())));
        error.text = qtError.error == QJsonParseError::DeepNesting
                ? QStringLiteral("objects and lists are nested too deeply to be read")
                : qtError.errorString();
        return error;
    }
    error.range = tokenAt(text, failure.offset);
    describe(text, failure.code, &error);
    return error;
}
