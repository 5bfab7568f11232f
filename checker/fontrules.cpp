// Rules for fonts.

#include "checker/qtfonts.h"
#include "checker/rules.h"
#include "checker/themekeys.h"
#include "checker/words.h"

#include <QtCore/QJsonObject>
#include <QtGui/QFontInfo>

namespace {

// As in the plugin: above this weight a font counts as bold. Qt 5 and Qt 6 number weights
// differently.
const int boldThreshold = QFont::Medium;

const int usualSize = 12;

/// The fonts in the order in which the plugin reads them.
const char *const fontKeys[] = { "main", "alternate", "h1", "h2", "h3", "h4" };

QFont fontOf(const ThemeObjectFonts &fonts, const QString &key)
{
    return fonts.property((key + QLatin1String("Font")).toLatin1().constData()).value<QFont>();
}

/// Looks through the "fonts" of one scope.
class FontCheck
{
public:
    /// \a before are the fonts that the scope is laid over.
    FontCheck(const ThemeContext &context, const Node::Member &fonts,
              const ThemeObjectFonts &before, Findings &findings)
        : m_context(context)
        , m_member(fonts)
        , m_findings(findings)
        , m_result(nullptr)
    {
        // Assignment is the only way to copy such objects.
        // cppcheck-suppress useInitializationList
        m_result = before;
        QJsonObject object = fonts.node.value.toObject();
        m_result.load(object, true);
    }

    void run()
    {
        for (const char *key : fontKeys) {
            if (const Node::Member *font = described(key))
                checkFont(*font);
        }
        if (!described("main")) {
            m_findings.add(Code::FontsWithoutMain, m_member.keyRange,
                           QStringLiteral("`main` is not described, so the main font becomes the "
                                          "application's font at three quarters of its size"),
                           QStringLiteral("describe `main` as well: all six fonts are set anew"));
        }
        checkHeadings();
    }

private:
    /// The description of the font \a key; null if there is none that counts.
    const Node::Member *described(const char *key) const
    {
        const Node::Member *font = m_member.node.member(QLatin1String(key));
        return font && !font->node.value.toObject().isEmpty() ? font : nullptr;
    }

    void checkFont(const Node::Member &font)
    {
        checkFamily(font);
        checkSize(font);
        checkWeight(font);
        checkBold(font);
        checkCapitalization(font);
    }

    void checkFamily(const Node::Member &font)
    {
        const Node::Member *family = font.node.member(QLatin1String("family"));
        if (!family || !family->node.value.isString())
            return;
        const QString name = family->node.value.toString();
        if (m_context.fonts.isInstalled(name))
            return;
        // Of a size that it can't draw the font database tells no family.
        QFont asked = fontOf(m_result, font.key);
        asked.setPointSize(usualSize);
        m_findings.add(Code::FamilyNotInstalled, family->node.range,
                       QStringLiteral("the family %1 is not installed on this machine, which takes "
                                      "%2 instead")
                               .arg(Words::quoted(name), Words::quoted(QFontInfo(asked).family())));
    }

    void checkSize(const Node::Member &font)
    {
        const Node::Member *size = font.node.member(QLatin1String("pointSize"));
        if (!size) {
            reportMissingSize(font);
            return;
        }
        const QJsonValue &value = size->node.value;
        if (value.isDouble() && value.toDouble() * m_result.fontFactor() <= 0) {
            m_findings.add(Code::BadFontSize, size->node.range,
                           QStringLiteral("the `pointSize` is not above zero, so the size is that "
                                          "of the application's font"));
        }
    }

    void reportMissingSize(const Node::Member &font)
    {
        QString base = QStringLiteral("of the main font");
        if (font.key == QLatin1String("main"))
            base = QStringLiteral("of the application's font");
        else if (font.key == QLatin1String("alternate"))
            base = QStringLiteral("of the alternate font before");
        m_findings.add(
                Code::FontWithoutSize, font.keyRange,
                QStringLiteral("%1 has no `pointSize`, so its size is three quarters of that "
                               "%2")
                        .arg(Words::quoted(font.key), base),
                QStringLiteral("add a `pointSize`"));
    }

    void checkWeight(const Node::Member &font)
    {
        const Node::Member *weight = font.node.member(QLatin1String("weight"));
        if (!weight)
            return;
        const QString name = weight->node.value.toString();
        const QString family = fontOf(m_result, font.key).family();
        // Of a family that is not there nothing can be told.
        if (name.isEmpty() || !m_context.fonts.isInstalled(family)
            || FontFacts::hasWeight(family, name))
            return;
        const QStringList weights = m_context.fonts.weights(family);
        const QString nearest = Words::nearest(name, weights);
        QStringList help;
        if (!nearest.isEmpty())
            help.append(QStringLiteral("did you mean %1?").arg(Words::quoted(nearest)));
        help.append(QStringLiteral("weights of %1 on this machine: %2")
                            .arg(Words::quoted(family), weights.join(QLatin1String(", "))));
        m_findings.add(Code::UnknownWeight, weight->node.range,
                       QStringLiteral("the family %1 has no weight %2, so it does not count")
                               .arg(Words::quoted(family), Words::quoted(name)),
                       help);
    }

    void checkBold(const Node::Member &font)
    {
        const Node::Member *bold = font.node.member(QLatin1String("bold"));
        if (!bold || !bold->node.value.isBool())
            return;
        const QFont result = fontOf(m_result, font.key);
        if ((result.weight() > boldThreshold) == bold->node.value.toBool())
            return;
        QStringList help;
        const QString bolder = boldWeight(result.family());
        if (bold->node.value.toBool() && !bolder.isEmpty())
            help.append(QStringLiteral("write `\"weight\": \"%1\"` instead").arg(bolder));
        m_findings.add(Code::BoldWithoutEffect, bold->keyRange,
                       QStringLiteral("`bold` has no effect: the weight always has the last word"),
                       help);
    }

    /// The lightest weight of \a family that counts as bold; empty if there is none.
    QString boldWeight(const QString &family)
    {
        const QStringList weights = m_context.fonts.weights(family);
        for (const QString &name : weights) {
            if (QtFonts::weight(family, name) > boldThreshold)
                return name;
        }
        return QString();
    }

    void checkCapitalization(const Node::Member &font)
    {
        const Node::Member *member = font.node.member(QLatin1String("capitalization"));
        if (!member || !member->node.value.isString())
            return;
        const ThemeKey *key = ThemeKeys::find(ThemeKey::Font, member->key);
        const QString word = member->node.value.toString();
        if (word.isEmpty() || fontOf(m_result, font.key).capitalization() != QFont::MixedCase
            || word.compare(key->words.first(), Qt::CaseInsensitive) == 0)
            return;
        const QString nearest = Words::nearest(word, key->words);
        QStringList help;
        if (!nearest.isEmpty())
            help.append(QStringLiteral("did you mean %1?").arg(Words::quoted(nearest)));
        help.append(QStringLiteral("the words are %1").arg(Words::quotedList(key->words)));
        m_findings.add(Code::UnknownCapitalization, member->node.range,
                       QStringLiteral("%1 is no capitalization").arg(Words::quoted(word)), help);
    }

    /// Headings that are left out look like the font before them.
    void checkHeadings()
    {
        const Node::Member *alternate = described("alternate");
        if (!alternate)
            return;
        const QString family = m_result.alternateFont().family();
        if (family == m_result.mainFont().family())
            return;
        QStringList headings;
        for (const char *key : { "h1", "h2", "h3", "h4" }) {
            if (described(key))
                break;
            headings.append(QLatin1String(key));
        }
        if (headings.isEmpty())
            return;
        m_findings.add(
                Code::HeadingFromAlternate, alternate->keyRange,
                QStringLiteral("%1 %2 not described and %3 the family of `alternate`, %4")
                        .arg(Words::quotedList(headings),
                             headings.size() == 1 ? QStringLiteral("is") : QStringLiteral("are"),
                             headings.size() == 1 ? QStringLiteral("takes")
                                                  : QStringLiteral("take"),
                             Words::quoted(family)),
                QStringLiteral("describe `h1` as well"));
    }

    const ThemeContext &m_context;
    const Node::Member &m_member;
    Findings &m_findings;
    ThemeObjectFonts m_result;
};

void checkScope(const ThemeContext &context, const Node::Member &scope,
                const ThemeObjectFonts &before, Findings &findings)
{
    const Node::Member *fonts = scope.node.member(QLatin1String("fonts"));
    if (fonts && !fonts->node.value.toObject().isEmpty())
        FontCheck(context, *fonts, before, findings).run();
}

} // namespace

void checkFonts(const ThemeContext &context, Findings &findings)
{
    // "global" is laid over the defaults, a class over the theme.
    const ThemeObjectFonts defaults(nullptr);
    const ThemeObjectFonts &own = context.scratch ? context.scratch->data().fonts : defaults;
    for (const Node::Member &scope : context.document.root().members) {
        if (scope.isReplaced || !scope.node.value.isObject())
            continue;
        checkScope(context, scope, scope.key == QLatin1String("global") ? defaults : own, findings);
    }
}
