#include "values/themeobjectfonts.h"

#include "values/runningcall.h"
#include "values/styleweight.h"
#include "values/truncated.h"

namespace {

// QFont refuses sizes that are not above zero with a message on the log; refusing them here
// first has the same effect without the message.
void setPointSize(QFont &font, double points)
{
    if (points > 0)
        font.setPointSizeF(points);
}

void setWholePointSize(QFont &font, double points)
{
    const int whole = truncated(points);
    if (whole > 0)
        font.setPointSize(whole);
}

QFont::Capitalization capitalization(const QString &text)
{
    static const struct
    {
        const char *word;
        QFont::Capitalization value;
    } words[] = {
        { "alluppercase", QFont::AllUppercase },
        { "alllowercase", QFont::AllLowercase },
        { "smallcaps", QFont::SmallCaps },
        { "capitalize", QFont::Capitalize },
    };
    const QString lowered = text.toLower();
    for (const auto &entry : words) {
        if (lowered == QLatin1String(entry.word))
            return entry.value;
    }
    return QFont::MixedCase;
}

/// The style that a font description asks for by its name; empty if it names none.
QString styleName(const QJsonObject &description)
{
    return description.value(QStringLiteral("weight")).toString();
}

} // namespace

ThemeObjectFonts::ThemeObjectFonts(QObject *parent)
    : ThemeObject(parent)
    , m_fontFactor(0.75)
{
    groupName = QStringLiteral("fonts");
}

/// A group without a parent that holds \a values from the start. Default fonts, to be
/// replaced at once, would cost a lock of the application's font each.
ThemeObjectFonts::ThemeObjectFonts(const Values &values)
    : m_fonts(values)
    , m_fontFactor(0.75)
{
    groupName = QStringLiteral("fonts");
}

ThemeObjectFonts::~ThemeObjectFonts() = default;

ThemeObjectFonts &ThemeObjectFonts::operator=(const ThemeObjectFonts &other)
{
    const Values fonts = other.m_fonts;
    setFonts(fonts);
    return *this;
}

QFont ThemeObjectFonts::mainFont() const
{
    return m_fonts[Main];
}

void ThemeObjectFonts::setMainFont(const QFont &font)
{
    setFont(Main, font);
}

QFont ThemeObjectFonts::alternateFont() const
{
    return m_fonts[Alternate];
}

void ThemeObjectFonts::setAlternateFont(const QFont &font)
{
    setFont(Alternate, font);
}

QFont ThemeObjectFonts::h1Font() const
{
    return m_fonts[H1];
}

void ThemeObjectFonts::setH1Font(const QFont &font)
{
    setFont(H1, font);
}

QFont ThemeObjectFonts::h2Font() const
{
    return m_fonts[H2];
}

void ThemeObjectFonts::setH2Font(const QFont &font)
{
    setFont(H2, font);
}

QFont ThemeObjectFonts::h3Font() const
{
    return m_fonts[H3];
}

void ThemeObjectFonts::setH3Font(const QFont &font)
{
    setFont(H3, font);
}

QFont ThemeObjectFonts::h4Font() const
{
    return m_fonts[H4];
}

void ThemeObjectFonts::setH4Font(const QFont &font)
{
    setFont(H4, font);
}

double ThemeObjectFonts::fontFactor() const
{
    return m_fontFactor;
}

void ThemeObjectFonts::load(QJsonObject &object, bool)
{
    const RunningCall self(m_calls);
    // One font is carried from member to member on purpose: a font that is left out looks like
    // the one before it, not like the main font.
    QFont font = readFont(object[QStringLiteral("main")].toObject(), QFont());
    setMainFont(font);
    if (!self.isAlive())
        return;

    const QJsonObject alternate = object[QStringLiteral("alternate")].toObject();
    if (alternate.isEmpty())
        setPointSize(font, m_fonts[Main].pointSizeF());
    else
        font = readFont(alternate, m_fonts[Alternate]);
    setAlternateFont(font);

    // The smaller headings are cut to whole points on purpose.
    static const struct
    {
        const char *member;
        Role role;
        double extraPoints;
        void (*resize)(QFont &font, double points);
    } headings[] = {
        { "h1", H1, 5.0, setPointSize },
        { "h2", H2, 4.0, setPointSize },
        { "h3", H3, 3.0, setWholePointSize },
        { "h4", H4, 1.0, setWholePointSize },
    };
    for (const auto &heading : headings) {
        if (!self.isAlive())
            return;
        const QJsonObject description = object[QLatin1String(heading.member)].toObject();
        if (description.isEmpty())
            heading.resize(font, m_fonts[Main].pointSizeF() + heading.extraPoints);
        else
            font = readFont(description, m_fonts[Main]);
        setFont(heading.role, font);
    }
}

void ThemeObjectFonts::initDefaults()
{
    setFonts(Values());
}

QFont ThemeObjectFonts::readFont(const QJsonObject &description, const QFont &base) const
{
    QFont font;
    font.setFamily(description.value(QStringLiteral("family")).toString(base.family()));
    const double points =
            description.value(QStringLiteral("pointSize")).toDouble(base.pointSizeF());
    setPointSize(font, points * m_fontFactor);
    // The scale of weights is another one in each series of Qt; its names are the same.
    const bool bold =
            description.value(QStringLiteral("bold")).toBool(base.weight() > QFont::Medium);
    font.setWeight(bold ? QFont::Bold : QFont::Normal);
    const bool italic =
            description.value(QStringLiteral("italic")).toBool(base.style() != QFont::StyleNormal);
    font.setStyle(italic ? QFont::StyleItalic : QFont::StyleNormal);
    font.setCapitalization(
            capitalization(description.value(QStringLiteral("capitalization")).toString()));
    font.setLetterSpacing(
            QFont::AbsoluteSpacing,
            description.value(QStringLiteral("letterSpacing")).toDouble(base.letterSpacing()));
    // The weight always has the last word over "bold", also when the description names none.
    const QString style = styleName(description);
    const int weight = style.isEmpty() ? -1 : StyleWeight(font.family(), style).weight();
    font.setWeight(QFont::Weight(weight == -1 ? int(base.weight()) : weight));
    return font;
}

/// What the font database was asked for to make \a fonts from the "fonts" object \a object.
std::vector<StyleWeight> ThemeObjectFonts::styleWeights(const QJsonObject &object,
                                                        const Values &fonts)
{
    static const char *const members[RoleCount] = { "main", "alternate", "h1", "h2", "h3", "h4" };
    std::vector<StyleWeight> weights;
    for (size_t role = 0; role < RoleCount; ++role) {
        const QString style = styleName(object.value(QLatin1String(members[role])).toObject());
        if (!style.isEmpty())
            weights.emplace_back(fonts[role].family(), style);
    }
    return weights;
}

void ThemeObjectFonts::setFont(Role role, const QFont &font)
{
    static void (ThemeObjectFonts::*const changed[RoleCount])() = {
        &ThemeObjectFonts::mainFontChanged, &ThemeObjectFonts::alternateFontChanged,
        &ThemeObjectFonts::h1FontChanged,   &ThemeObjectFonts::h2FontChanged,
        &ThemeObjectFonts::h3FontChanged,   &ThemeObjectFonts::h4FontChanged,
    };
    if (m_fonts[role] == font)
        return;
    m_fonts[role] = font;
    ++m_changes;
    const RunningCall self(m_calls);
    Q_EMIT(this->*changed[role])();
}

void ThemeObjectFonts::setFonts(const Values &fonts)
{
    RunningCall::supersede(m_calls);
    const RunningCall self(m_calls);
    for (int role = 0; role < RoleCount; ++role) {
        setFont(Role(role), fonts[size_t(role)]);
        // A handler may have assigned anew, or destroyed the group: what it did stands.
        if (!self.isCurrent())
            return;
    }
}
