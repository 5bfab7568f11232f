// Rules for the keys and values of scopes, fonts excepted.

#include "checker/channel.h"
#include "checker/rules.h"
#include "checker/themekeys.h"
#include "checker/words.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>

#include <cmath>

namespace {

QString typeOf(const QJsonValue &value)
{
    switch (value.type()) {
    case QJsonValue::Bool:
        return QStringLiteral("true or false");
    case QJsonValue::Double:
        return QStringLiteral("a number");
    case QJsonValue::String:
        return QStringLiteral("text");
    case QJsonValue::Array:
        return QStringLiteral("a list");
    case QJsonValue::Object:
        return QStringLiteral("an object");
    default:
        return QStringLiteral("null");
    }
}

QString wanted(ThemeKey::Type type)
{
    switch (type) {
    case ThemeKey::Text:
    case ThemeKey::Color:
    case ThemeKey::Word:
        return QStringLiteral("text");
    case ThemeKey::Number:
        return QStringLiteral("a number");
    case ThemeKey::WholeNumber:
        return QStringLiteral("a whole number");
    case ThemeKey::Truth:
        return QStringLiteral("true or false");
    case ThemeKey::Object:
        break;
    }
    return QStringLiteral("an object");
}

bool hasType(const QJsonValue &value, ThemeKey::Type type)
{
    switch (type) {
    case ThemeKey::Text:
    case ThemeKey::Color:
    case ThemeKey::Word:
        return value.isString();
    case ThemeKey::Number:
    case ThemeKey::WholeNumber:
        return value.isDouble();
    case ThemeKey::Truth:
        return value.isBool();
    case ThemeKey::Object:
        break;
    }
    return value.isObject();
}

/// What to write in place of the text \a value where \a type is wanted; empty if that can't be
/// told.
QString unquoted(const QJsonValue &value, ThemeKey::Type type)
{
    static const QRegularExpression number(
            QStringLiteral("^\\s*(-?(?:0|[1-9]\\d*)(?:\\.\\d+)?)\\s*(?:pt|px|em)?\\s*$"));
    QString text = value.toString();
    if (type == ThemeKey::Truth
        && (text == QLatin1String("true") || text == QLatin1String("false")))
        return text;
    if (type == ThemeKey::Number || type == ThemeKey::WholeNumber)
        return number.match(text).captured(1);
    return QString();
}

/// A color written as in style sheets, in the plugin's way; empty if \a text is none.
QString fromStyleSheet(const QString &text)
{
    static const QRegularExpression function(
            QStringLiteral("^rgba?\\(\\s*(\\d{1,3})\\s*[, ]\\s*(\\d{1,3})\\s*[, ]\\s*(\\d{1,3})"
                           "\\s*(?:[,/]\\s*(\\d*\\.?\\d+)\\s*)?\\)$"),
            QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = function.match(text.trimmed());
    if (!match.hasMatch())
        return QString();
    QColor color(match.captured(1).toInt(), match.captured(2).toInt(), match.captured(3).toInt());
    if (!match.captured(4).isEmpty())
        color.setAlphaF(Channel(qBound(0.0, match.captured(4).toDouble(), 1.0)));
    if (!color.isValid())
        return QString();
    return color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
}

/// The color that \a text may have been meant to be; empty if that can't be told.
QString nearestColor(const QString &text)
{
    static const QRegularExpression bare(QStringLiteral("^(?:0[xX])?((?:[0-9a-fA-F]{3}){1,2})$"));
    static const QRegularExpression withAlpha(
            QStringLiteral("^#([0-9a-fA-F])([0-9a-fA-F])([0-9a-fA-F])([0-9a-fA-F])$"));
    const QString digits = bare.match(text.trimmed()).captured(1);
    if (!digits.isEmpty())
        return QLatin1Char('#') + digits;
    const QRegularExpressionMatch alpha = withAlpha.match(text);
    if (alpha.hasMatch()) {
        QString color = QStringLiteral("#");
        for (const int channel : { 4, 1, 2, 3 })
            color += alpha.captured(channel) + alpha.captured(channel);
        return color;
    }
    const QString function = fromStyleSheet(text);
    return function.isEmpty() ? Words::nearest(text, QColor::colorNames()) : function;
}

/// Whether the eight digits of \a text, whose alpha stands first, look as if it stood last.
bool seemsToEndWithAlpha(const QString &text, const QColor &color)
{
    if (text.size() != 9 || !text.startsWith(QLatin1Char('#')))
        return false;
    // White or grey that is partly transparent is common, and reads the same at first glance.
    const bool isGrey = color.red() == color.green() && color.green() == color.blue();
    if (isGrey || color.alpha() == 0xff)
        return false;
    const int last = color.blue();
    return last == 0xff || (color.alpha() < 0x40 && last >= 0xc0);
}

QString percent(double fraction)
{
    return QStringLiteral("%1 %").arg(int(std::lround(fraction * 100)));
}

/// The key of a document that \a key, with \a value, may have been meant to be; empty if none is
/// near.
QString nearestDocumentKey(const QString &key, const QJsonValue &value)
{
    QStringList names;
    const QVector<ThemeKey> keys = ThemeKeys::at(ThemeKey::Document);
    for (const ThemeKey &known : keys) {
        if (!known.name.isEmpty() && hasType(value, known.type))
            names.append(known.name);
    }
    return Words::nearest(key, names);
}

bool isScopeKey(const QString &key)
{
    return ThemeKeys::names(ThemeKey::Scope).contains(key);
}

/// Looks through the scopes of one theme.
class ScopeCheck
{
public:
    ScopeCheck(const ThemeContext &context, Findings &findings)
        : m_context(context)
        , m_findings(findings)
    {
    }

    void run()
    {
        for (const Node::Member &member : m_context.document.root().members) {
            if (!member.isReplaced)
                checkDocumentMember(member);
        }
    }

private:
    void checkDocumentMember(const Node::Member &member)
    {
        const ThemeKey *key = ThemeKeys::find(ThemeKey::Document, member.key);
        if (key->name.isEmpty()) {
            checkClass(member);
            return;
        }
        if (!checkType(*key, member) || key->type != ThemeKey::Object)
            return;
        m_isClass = false;
        checkMembers(key->content, member.node);
        checkDerivedShades(member.node);
        checkPalette(member.node);
    }

    void checkClass(const Node::Member &member)
    {
        // Editors and tools put words of their own there.
        if (member.key.startsWith(QLatin1Char('$')))
            return;
        if (reportMisplaced(member))
            return;
        const QJsonValue &value = member.node.value;
        if (value.toObject().isEmpty()) {
            // An empty class is of use: it hides what is inherited, or left over from another
            // theme.
            if (!value.isObject() || !m_context.set.isShown(member.key))
                m_findings.add(
                        Code::EmptyScope, member.keyRange,
                        value.isObject()
                                ? QStringLiteral("the class %1 is empty, so it never applies")
                                          .arg(Words::quoted(member.key))
                                : QStringLiteral("%1 is no object but %2, so it makes a "
                                                 "class that never applies")
                                          .arg(Words::quoted(member.key), typeOf(value)));
            return;
        }
        if (member.key.isEmpty() || member.key.contains(QLatin1Char(' ')))
            m_findings.add(
                    Code::UnmatchableClass, member.keyRange,
                    member.key.isEmpty()
                            ? QStringLiteral("a class without a name, which no item can have")
                            : QStringLiteral("the name of the class %1 has a space in it, so "
                                             "no item can have it: spaces separate names")
                                      .arg(Words::quoted(member.key)));
        m_isClass = true;
        checkMembers(ThemeKey::Scope, member.node);
    }

    /// \return whether \a member was meant for another place or another name.
    bool reportMisplaced(const Node::Member &member)
    {
        const QJsonValue &value = member.node.value;
        if (!isMistakenClass(member.key, value))
            return false;
        const QString what =
                QStringLiteral("%1 is the name of a class here").arg(Words::quoted(member.key));
        const QString nearest = nearestDocumentKey(member.key, value);
        if (!nearest.isEmpty())
            m_findings.add(Severity::Warning, Code::UnknownKey, member.keyRange, what,
                           { QStringLiteral("did you mean %1?").arg(Words::quoted(nearest)) });
        else
            m_findings.add(Code::MisplacedKey, member.keyRange, what,
                           QStringLiteral("move it into %1")
                                   .arg(isScopeKey(member.key)
                                                ? QStringLiteral("`global`")
                                                : QStringLiteral("`colors` in `global`")));
        return true;
    }

    void checkMembers(ThemeKey::Place place, const Node &node)
    {
        for (const Node::Member &member : node.members) {
            if (member.isReplaced)
                continue;
            const ThemeKey *key = ThemeKeys::find(place, member.key);
            if (!key) {
                reportUnknown(place, member);
                continue;
            }
            if (key->type == ThemeKey::WholeNumber) {
                checkRadius(member);
                continue;
            }
            if (!checkType(*key, member))
                continue;
            if (key->type == ThemeKey::Object)
                checkMembers(key->content, member.node);
            else if (key->type == ThemeKey::Color)
                checkColor(member);
        }
    }

    void reportUnknown(ThemeKey::Place place, const Node::Member &member)
    {
        const QStringList names = ThemeKeys::names(place);
        const QString nearest = Words::nearest(member.key, names);
        const QString what = QStringLiteral("%1 means nothing here").arg(Words::quoted(member.key));
        if (!nearest.isEmpty()) {
            // Classes may hold members of any name.
            m_findings.add(m_isClass ? Severity::Warning : Severity::Error, Code::UnknownKey,
                           member.keyRange, what,
                           { QStringLiteral("did you mean %1?").arg(Words::quoted(nearest)) });
        } else if (!m_isClass) {
            m_findings.add(Code::UnknownKey, member.keyRange, what,
                           QStringLiteral("the keys here are %1")
                                   .arg(Words::quotedList(names, int(names.size()))));
        }
    }

    bool checkType(const ThemeKey &key, const Node::Member &member)
    {
        const QJsonValue &value = member.node.value;
        if (hasType(value, key.type))
            return true;
        const QString instead = unquoted(value, key.type);
        QStringList help;
        if (!instead.isEmpty())
            help.append(QStringLiteral("write `%1`, without quotes").arg(instead));
        m_findings.add(Code::WrongType, member.node.range,
                       QStringLiteral("%1 takes %2, not %3")
                               .arg(Words::quoted(member.key), wanted(key.type), typeOf(value)),
                       help);
        return false;
    }

    void checkRadius(const Node::Member &member)
    {
        const QJsonValue &value = member.node.value;
        if (m_isClass) {
            m_findings.add(
                    Code::ClassRadius, member.keyRange,
                    QStringLiteral("the `radius` of a class is never shown: an item's radius "
                                   "is that of `global`"));
            return;
        }
        // The very question that the plugin asks.
        if (value.toInt(-1) >= 0)
            return;
        QString fault = QStringLiteral("it is %1").arg(typeOf(value));
        QStringList help;
        if (value.isDouble()) {
            const double number = value.toDouble();
            if (number < 0) {
                fault = QStringLiteral("it is below zero");
            } else if (std::floor(number) != number) {
                fault = QStringLiteral("it has a fraction");
                help.append(QStringLiteral("write `%1`").arg(std::lround(number)));
            } else {
                fault = QStringLiteral("it is too large");
            }
        } else if (const QString instead = unquoted(value, ThemeKey::WholeNumber);
                   !instead.isEmpty()) {
            help.append(QStringLiteral("write `%1`, without quotes").arg(instead));
        }
        m_findings.add(Code::BadRadius, member.node.range,
                       QStringLiteral("the `radius` does not count, because %1").arg(fault), help);
    }

    void checkColor(const Node::Member &member)
    {
        const QString text = member.node.value.toString();
        const QColor color = readColor(text);
        if (!color.isValid()) {
            const QString nearest = nearestColor(text);
            m_findings.add(
                    Code::NotAColor, member.node.range,
                    text.isEmpty() ? QStringLiteral("an empty text is no color")
                                   : QStringLiteral("%1 is no color").arg(Words::quoted(text)),
                    nearest.isEmpty()
                            ? QStringLiteral("a color is `#RRGGBB`, `#AARRGGBB`, `#RGB` or a "
                                             "name such as `steelblue`")
                            : QStringLiteral("did you mean %1?").arg(Words::quoted(nearest)));
        } else if (seemsToEndWithAlpha(text, color)) {
            m_findings.add(Code::AlphaLast, member.node.range,
                           QStringLiteral("%1 is %2, %3 opaque: alpha stands first")
                                   .arg(Words::quoted(text), Words::quoted(color.name()),
                                        percent(color.alphaF())),
                           QStringLiteral("if it was meant to stand last, write `#%1%2`")
                                   .arg(text.mid(7, 2), text.mid(1, 6)));
        }
    }

    /// \a scope is that of "global", the only one whose missing shades are derived.
    void checkDerivedShades(const Node &scope)
    {
        const Node::Member *colors = scope.member(QLatin1String("colors"));
        if (!colors)
            return;
        for (const ColorFamily family : { ForegroundColors, BackgroundColors }) {
            const QVector<ColorRole> &roles = colorRoles(family);
            const Node::Member *base = colors->node.member(QLatin1String(roles.first().key));
            if (!base)
                continue;
            const QColor color = readColor(base->node.value.toString());
            QStringList derived;
            for (const ColorRole &role : roles) {
                if (!colors->node.member(QLatin1String(role.key)))
                    derived.append(QLatin1String(role.key));
            }
            if (!color.isValid() || color.alpha() == 255 || derived.isEmpty())
                continue;
            m_findings.add(Code::AlphaDropped, base->node.range,
                           QStringLiteral("%1 %2 derived from it and opaque: derived shades lose "
                                          "the alpha")
                                   .arg(Words::quotedList(derived),
                                        derived.size() == 1 ? QStringLiteral("is")
                                                            : QStringLiteral("are")),
                           QStringLiteral("set the shades as well"));
        }
    }

    void checkPalette(const Node &scope)
    {
        const Node::Member *colors = scope.member(QLatin1String("colors"));
        if (!colors)
            return;
        const bool hasForeground = colors->node.member(QLatin1String("foreground"));
        const bool hasBackground = colors->node.member(QLatin1String("background"));
        if (hasForeground == hasBackground)
            return;
        const QString text = hasForeground
                ? QStringLiteral("`background` is not set, so it is the "
                                 "application's, on which this `foreground` may be "
                                 "unreadable")
                : QStringLiteral("`foreground` is not set, so it is the "
                                 "application's, which may be unreadable on this "
                                 "`background`");
        const QLatin1String set(hasForeground ? "foreground" : "background");
        m_findings.add(Code::PaletteColor, colors->node.member(set)->keyRange, text,
                       QStringLiteral("set both"));
    }

    const ThemeContext &m_context;
    Findings &m_findings;
    bool m_isClass = false;
};

} // namespace

bool isMistakenClass(const QString &key, const QJsonValue &value)
{
    // Editors and tools put words of their own there.
    if (key.startsWith(QLatin1Char('$')))
        return false;
    return isScopeKey(key) || ThemeKeys::names(ThemeKey::Colors).contains(key)
            || !nearestDocumentKey(key, value).isEmpty();
}

void checkScopes(const ThemeContext &context, Findings &findings)
{
    ScopeCheck(context, findings).run();
}
