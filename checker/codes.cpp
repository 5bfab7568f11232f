#include "checker/codes.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

/// The resources of a static library have to be asked for, outside of any namespace.
static void registerResources()
{
    Q_INIT_RESOURCE(checker);
}

namespace {

CodeInfo entry(Code code, const char *name, Severity severity, const char *summary)
{
    return { code, QLatin1String(name), severity, QLatin1String(summary) };
}

} // namespace

const QVector<CodeInfo> &Codes::all()
{
    static const QVector<CodeInfo> codes = {
        entry(Code::SyntaxError, "syntax-error", Severity::Error,
              "the text is no JSON, so the theme is empty"),
        entry(Code::NotUtf8, "not-utf8", Severity::Error,
              "the text is not in UTF-8, so the theme is empty"),
        entry(Code::EmptyFile, "empty-file", Severity::Error,
              "the file is empty, so the theme is left out"),
        entry(Code::NotAnObject, "not-an-object", Severity::Error,
              "the document is no object, so the theme is empty"),
        entry(Code::ByteOrderMark, "byte-order-mark", Severity::Warning,
              "the file begins with a byte order mark"),
        entry(Code::DuplicateKey, "duplicate-key", Severity::Error,
              "a key is written twice, and the first value is lost"),
        entry(Code::MissingTitle, "missing-title", Severity::Error, "the theme has no title"),
        entry(Code::EmptyTitle, "empty-title", Severity::Error, "the title is empty"),
        entry(Code::DuplicateTitle, "duplicate-title", Severity::Warning,
              "two themes have one title"),
        entry(Code::SimilarTitles, "similar-titles", Severity::Warning,
              "two titles differ in letter case only"),
        entry(Code::UnreadableFile, "unreadable-file", Severity::Error,
              "the file can't be read, so the theme is left out"),
        entry(Code::HiddenFile, "hidden-file", Severity::Note, "a hidden file is passed over"),
        entry(Code::OtherExtension, "other-extension", Severity::Note,
              "the file is not named *.thm, so no application loads it"),
        entry(Code::UnknownParent, "unknown-parent", Severity::Error,
              "the theme extends a title that no theme has"),
        entry(Code::ExtendsItself, "extends-itself", Severity::Error, "the theme extends itself"),
        entry(Code::ExtendsRing, "extends-ring", Severity::Error,
              "themes extend each other in a ring"),
        entry(Code::ParentTooLate, "parent-too-late", Severity::Error,
              "the theme it extends is loaded after it"),
        entry(Code::ParentLeftOut, "parent-left-out", Severity::Error,
              "the theme it extends is left out"),
        entry(Code::GlobalDiscardsParent, "global-discards-parent", Severity::Note,
              "\"global\" replaces what the theme inherits"),
        entry(Code::UnknownKey, "unknown-key", Severity::Error, "a key that means nothing there"),
        entry(Code::MisplacedKey, "misplaced-key", Severity::Warning,
              "a key of a scope that stands outside of one"),
        entry(Code::WrongType, "wrong-type", Severity::Error,
              "a value of another type than its key takes"),
        entry(Code::NotAColor, "not-a-color", Severity::Error, "text that is no color"),
        entry(Code::AlphaLast, "alpha-last", Severity::Warning,
              "eight digits whose alpha seems to stand last"),
        entry(Code::AlphaDropped, "alpha-dropped", Severity::Warning,
              "a derived shade loses the alpha of its color"),
        entry(Code::PaletteColor, "palette-color", Severity::Warning,
              "one of foreground and background comes from the application"),
        entry(Code::BadRadius, "bad-radius", Severity::Error,
              "a radius that is negative, fractional or no number"),
        entry(Code::ClassRadius, "class-radius", Severity::Warning,
              "the radius of a class, which no item shows"),
        entry(Code::EmptyScope, "empty-scope", Severity::Warning,
              "a class without any value, which never applies"),
        entry(Code::UnmatchableClass, "unmatchable-class", Severity::Error,
              "a class name that no item can have"),
        entry(Code::UnevenClass, "uneven-class", Severity::Warning,
              "some themes describe a class and others don't"),
        entry(Code::BoldWithoutEffect, "bold-without-effect", Severity::Error,
              "\"bold\" says something else than the weight"),
        entry(Code::BadFontSize, "bad-font-size", Severity::Error,
              "a font size that is not above zero"),
        entry(Code::FontWithoutSize, "font-without-size", Severity::Warning,
              "a font without a size is scaled once more"),
        entry(Code::FontsWithoutMain, "fonts-without-main", Severity::Warning,
              "fonts are described, but not the main font"),
        entry(Code::UnknownWeight, "unknown-weight", Severity::Error,
              "a weight that the family has no style for"),
        entry(Code::FamilyNotInstalled, "family-not-installed", Severity::Note,
              "the family is not installed on this machine"),
        entry(Code::UnknownCapitalization, "unknown-capitalization", Severity::Error,
              "a word that is no capitalization"),
        entry(Code::HeadingFromAlternate, "heading-from-alternate", Severity::Warning,
              "headings take the family of the alternate font"),
        entry(Code::LowContrast, "low-contrast", Severity::Warning,
              "text that is hard to read on its background"),
        entry(Code::StyleError, "style-error", Severity::Error,
              "a QML style that does not compile"),
        entry(Code::DuplicateStyle, "duplicate-style", Severity::Error,
              "two style files with one name"),
        entry(Code::StyleWithoutBase, "style-without-base", Severity::Warning,
              "a variant of a style that does not exist"),
        entry(Code::StyleOfUnknownClass, "style-of-unknown-class", Severity::Warning,
              "a variant for a class that no theme describes"),
        entry(Code::StyleColor, "style-color", Severity::Note,
              "a color that is written into a style"),
        entry(Code::FontFileRefused, "font-file-refused", Severity::Error,
              "a file among the fonts that is no font"),
    };
    return codes;
}

const CodeInfo &Codes::info(Code code)
{
    return all().at(int(code));
}

QString Codes::page(Code code)
{
    registerResources();
    QFile file(QStringLiteral(":/checker/checker-codes.md"));
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    const QString text = QString::fromUtf8(file.readAll());
    const QString heading = QStringLiteral("\n## %1\n").arg(info(code).name);
    const auto begin = text.indexOf(heading);
    if (begin < 0)
        return QString();
    const auto body = begin + heading.size();
    return text.mid(body, text.indexOf(QLatin1String("\n## "), body) - body).trimmed();
}

QString Codes::text(Code code)
{
    const QLatin1String fence("```");
    QStringList lines;
    bool isExample = false;
    bool hasExample = false;
    const QStringList pageLines = page(code).split(QLatin1Char('\n'));
    for (const QString &line : pageLines) {
        if (!line.startsWith(fence)) {
            static const QRegularExpression emphasis(QStringLiteral("\\*(\\w[^*]*\\w)\\*"));
            QString words = line;
            lines.append(isExample ? QStringLiteral("    ") + line
                                   : words.replace(emphasis, QStringLiteral("\\1")));
            continue;
        }
        isExample = !isExample;
        if (isExample)
            lines += { QLatin1String(hasExample ? "Mended:" : "Example:"), QString() };
        hasExample = true;
    }
    return lines.join(QLatin1Char('\n'));
}

const CodeInfo *Codes::find(const QString &name)
{
    for (const CodeInfo &info : all()) {
        if (info.name == name)
            return &info;
    }
    return nullptr;
}

QStringList Codes::names()
{
    QStringList names;
    for (const CodeInfo &info : all())
        names.append(info.name);
    return names;
}

QString Codes::severityName(Severity severity)
{
    switch (severity) {
    case Severity::Error:
        return QStringLiteral("error");
    case Severity::Warning:
        return QStringLiteral("warning");
    case Severity::Note:
        break;
    }
    return QStringLiteral("note");
}
