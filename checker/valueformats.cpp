#include "checker/valueformats.h"

#include "checker/effectivevalues.h"
#include "checker/fontweight.h"
#include "checker/words.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QRegularExpression>
#include <QtGui/QColor>
#include <QtGui/QFont>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

const QLatin1Char separator('/');

QString groupOf(const QString &key)
{
    return key.section(separator, 0, 0);
}

/// \a key without its group.
QString nameOf(const QString &key)
{
    return key.contains(separator) ? key.section(separator, 1) : key;
}

QString number(double value)
{
    return QString::number(value, 'g', 12);
}

bool isNumber(const QVariant &value)
{
    return value.userType() == QMetaType::Int || value.userType() == QMetaType::Double
            || value.userType() == QMetaType::LongLong;
}

QString patch(const QVariant &value)
{
    if (value.userType() != QMetaType::QColor)
        return QStringLiteral("   ");
    const auto color = value.value<QColor>();
    return QStringLiteral("\033[48;2;%1;%2;%3m  \033[0m ")
            .arg(color.red())
            .arg(color.green())
            .arg(color.blue());
}

/// Rows of cells as lines, the columns below each other.
class Table
{
public:
    void add(const QStringList &row)
    {
        m_rows.append(row);
        for (int column = 0; column < row.size(); ++column) {
            if (m_widths.size() <= column)
                m_widths.append(0);
            m_widths[column] = std::max(m_widths.at(column), int(row.at(column).size()));
        }
    }

    /// \param before what stands before the cell \a column of each row
    QString lines(const QVector<QStringList> &before) const
    {
        QString result;
        for (int row = 0; row < m_rows.size(); ++row) {
            QString line(QStringLiteral("  "));
            for (int column = 0; column < m_rows.at(row).size(); ++column) {
                line += before.at(row).value(column);
                line += m_rows.at(row).at(column).leftJustified(m_widths.at(column))
                        + QStringLiteral("  ");
            }
            result += line;
            while (result.endsWith(QLatin1Char(' ')))
                result.chop(1);
            result += QLatin1Char('\n');
        }
        return result;
    }

private:
    QVector<QStringList> m_rows;
    QVector<int> m_widths;
};

QString headline(const EffectiveValues &values)
{
    QString result = values.title.isEmpty() ? QStringLiteral("(no title)") : values.title;
    result += QStringLiteral(", ") + ValueFormats::shortPath(values.file);
    if (!values.classnames.isEmpty())
        result += QStringLiteral(", classes: ") + values.classnames;
    return result;
}

/// The groups of \a keys in their order.
QStringList groups(const QStringList &keys)
{
    QStringList result;
    for (const QString &key : keys) {
        if (!result.contains(groupOf(key)))
            result.append(groupOf(key));
    }
    return result;
}

QVector<EffectiveValue> inGroup(const EffectiveValues &values, const QString &group)
{
    QVector<EffectiveValue> result;
    std::copy_if(values.values.begin(), values.values.end(), std::back_inserter(result),
                 [&group](const EffectiveValue &value) { return groupOf(value.key) == group; });
    return result;
}

QJsonValue json(const QVariant &value)
{
    if (value.userType() == QMetaType::QColor)
        return ValueFormats::text(value);
    return QJsonValue::fromVariant(value);
}

bool isWeight(const EffectiveValue &value)
{
    return groupOf(value.key) == QLatin1String("fonts")
            && value.key.endsWith(QLatin1String("/weight"));
}

QJsonValue json(const EffectiveValue &value)
{
    return isWeight(value) ? QJsonValue(FontWeight::number(value.value.toInt()))
                           : json(value.value);
}

QString text(const EffectiveValue &value)
{
    return isWeight(value) ? FontWeight::text(value.value.toInt())
                           : ValueFormats::text(value.value);
}

QJsonObject json(const ValueOrigin &origin)
{
    static const char *const kinds[] = { "default", "written", "derived", "file" };
    QJsonObject result{ { QStringLiteral("kind"), QLatin1String(kinds[origin.kind]) } };
    const auto add = [&result](const char *key, const QString &text) {
        if (!text.isEmpty())
            result.insert(QLatin1String(key), text);
    };
    add("file", origin.file);
    if (!origin.file.isEmpty() && origin.kind != ValueOrigin::File) {
        result.insert(QStringLiteral("line"), origin.position.line);
        result.insert(QStringLiteral("column"), origin.position.column);
    }
    add("scope", origin.scope);
    add("inheritedFrom", origin.inheritedFrom);
    add("base", origin.base);
    add("rule", origin.rule);
    return result;
}

QJsonObject json(const EffectiveValues &values)
{
    return { { QStringLiteral("title"), values.title },
             { QStringLiteral("file"), values.file },
             { QStringLiteral("classes"),
               QJsonArray::fromStringList(
                       values.classnames.split(QLatin1Char(' '), Qt::SkipEmptyParts)) } };
}

QString document(const QJsonObject &object)
{
    return QString::fromUtf8(QJsonDocument(object).toJson());
}

/// A string in double quotes that CSS reads back as \a text.
QString cssString(const QString &text)
{
    QString result;
    for (const QChar letter : text) {
        const bool isPlain = letter.isPrint() && letter != QLatin1Char('"')
                && letter != QLatin1Char('\\');
        result += isPlain || letter.isSurrogate()
                ? QString(letter)
                : QStringLiteral("\\%1 ").arg(int(letter.unicode()), 0, 16);
    }
    return QStringLiteral("\"%1\"").arg(result);
}

/// \a name where CSS wants a name.
QString cssName(const QString &name)
{
    QString result;
    for (const QChar letter : name) {
        const bool isPlain = letter.unicode() >= 0x80 || letter.isLetterOrNumber()
                || letter == QLatin1Char('_') || letter == QLatin1Char('-');
        const bool isLeadingDigit = result.isEmpty() && letter.isDigit();
        result += isPlain && !isLeadingDigit
                ? QString(letter)
                : QStringLiteral("\\%1 ").arg(int(letter.unicode()), 0, 16);
    }
    return result;
}

/// "lighterForeground" as "lighter-foreground".
QString hyphened(QString name)
{
    static const QRegularExpression upper(QStringLiteral("([A-Z])"));
    return name.replace(upper, QStringLiteral("-\\1")).toLower();
}

QString cssColor(const QColor &color)
{
    if (color.alpha() == 255)
        return color.name();
    return QStringLiteral("rgba(%1, %2, %3, %4)")
            .arg(color.red())
            .arg(color.green())
            .arg(color.blue())
            .arg(QString::number(color.alphaF(), 'f', 3));
}

struct Declaration
{
    QString name;
    QString value;
};

/// The declarations of a font's attribute.
QVector<Declaration> cssFont(const EffectiveValue &value)
{
    const QString attribute = value.key.section(separator, 2);
    QString font = value.key.section(separator, 1, 1);
    font.chop(4);
    const QString prefix = QStringLiteral("--font-%1-").arg(font);
    if (attribute == QLatin1String("family"))
        return { { prefix + QLatin1String("family"), cssString(value.value.toString()) } };
    if (attribute == QLatin1String("pointSize"))
        return { { prefix + QLatin1String("size"),
                   number(value.value.toDouble()) + QLatin1String("pt") } };
    if (attribute == QLatin1String("weight"))
        return { { prefix + QLatin1String("weight"),
                   QString::number(FontWeight::number(value.value.toInt())) } };
    if (attribute == QLatin1String("italic"))
        return { { prefix + QLatin1String("style"),
                   QLatin1String(value.value.toBool() ? "italic" : "normal") } };
    if (attribute == QLatin1String("letterSpacing"))
        return { { prefix + QLatin1String("letter-spacing"),
                   number(value.value.toDouble()) + QLatin1String("px") } };
    // One key here, two properties there.
    static const struct
    {
        const char *word;
        const char *transform;
        const char *variant;
    } words[] = { { "MixedCase", "none", "normal" },
                  { "AllUppercase", "uppercase", "normal" },
                  { "AllLowercase", "lowercase", "normal" },
                  { "SmallCaps", "none", "small-caps" },
                  { "Capitalize", "capitalize", "normal" } };
    const auto *const entry = std::find_if(
            std::begin(words), std::end(words), [&value](const auto &candidate) {
                return value.value.toString() == QLatin1String(candidate.word);
            });
    return { { prefix + QLatin1String("transform"), QLatin1String(entry->transform) },
             { prefix + QLatin1String("variant"), QLatin1String(entry->variant) } };
}

QVector<Declaration> cssDeclarations(const EffectiveValue &value)
{
    const QString group = groupOf(value.key);
    if (group == QLatin1String("colors"))
        return { { QStringLiteral("--color-") + hyphened(nameOf(value.key)),
                   cssColor(value.value.value<QColor>()) } };
    if (group == QLatin1String("fonts"))
        return cssFont(value);
    if (group == QLatin1String("radius"))
        return { { QStringLiteral("--radius"), QStringLiteral("%1px").arg(value.value.toInt()) } };
    if (group == QLatin1String("class")) {
        const QString name = QStringLiteral("--class-")
                + cssName(nameOf(value.key).replace(separator, QLatin1Char('-')));
        if (isNumber(value.value))
            return { { name, number(value.value.toDouble()) } };
        if (value.value.userType() == QMetaType::QString)
            return { { name, cssString(value.value.toString()) } };
    }
    return {};
}

/// \a text without what ends a line in CSS or QML.
QString oneLine(QString text)
{
    for (const QChar lineEnd :
         { QChar(u'\n'), QChar(u'\r'), QChar(u'\f'), QChar(0x2028), QChar(0x2029) })
        text.replace(lineEnd, QLatin1Char(' '));
    return text;
}

QString cssComment(const QString &text)
{
    return QStringLiteral("/* %1 */")
            .arg(oneLine(text).replace(QLatin1String("*/"), QLatin1String("* /")));
}

/// \a value as an expression of QML.
QString qmlExpression(const QVariant &value)
{
    if (value.userType() == QMetaType::QColor)
        return QStringLiteral("\"%1\"").arg(ValueFormats::text(value));
    // The parser takes whole documents only, so the brackets of an array are cut off.
    QString text = QString::fromUtf8(
            QJsonDocument(QJsonArray{ json(value) }).toJson(QJsonDocument::Compact));
    text = text.mid(1, text.size() - 2);
    // JSON allows these two in a string, the language of QML takes them for ends of lines.
    text.replace(QChar(0x2028), QLatin1String("\\u2028"));
    text.replace(QChar(0x2029), QLatin1String("\\u2029"));
    return text;
}

QString qmlComment(const ValueOrigin &origin)
{
    return QStringLiteral(" // ") + oneLine(ValueFormats::text(origin));
}

QString qmlColors(const QVector<EffectiveValue> &colors)
{
    QString result = QStringLiteral("    readonly property QtObject colors: QtObject {\n");
    for (const EffectiveValue &color : colors)
        result += QStringLiteral("        readonly property color %1: %2%3\n")
                          .arg(nameOf(color.key), qmlExpression(color.value),
                               qmlComment(color.origin));
    return result + QStringLiteral("    }\n");
}

QString qmlWeight(int weight)
{
    const QString name = FontWeight::name(weight);
    // A number alone is taken for a name.
    return name.isEmpty() ? QStringLiteral("(%1)").arg(weight) : QStringLiteral("Font.") + name;
}

QString qmlFonts(const QVector<EffectiveValue> &attributes)
{
    QString result = QStringLiteral("    readonly property QtObject fonts: QtObject {\n");
    QString font;
    for (const EffectiveValue &attribute : attributes) {
        const QString name = attribute.key.section(separator, 1, 1);
        if (name != font)
            result += QStringLiteral("        property font %1\n").arg(name);
        font = name;
        const QString key = attribute.key.section(separator, 2);
        QString value = qmlExpression(attribute.value);
        if (key == QLatin1String("capitalization"))
            value = QStringLiteral("Font.") + attribute.value.toString();
        else if (key == QLatin1String("weight"))
            value = qmlWeight(attribute.value.toInt());
        // One by one: Qt.font() cuts sizes to whole points.
        result += QStringLiteral("        %1.%2: %3%4\n")
                          .arg(name, key, value, qmlComment(attribute.origin));
    }
    return result + QStringLiteral("    }\n");
}

QString qmlMap(const char *name, const QVector<EffectiveValue> &values)
{
    QString result = QStringLiteral("    readonly property var %1: ({\n").arg(QLatin1String(name));
    for (const EffectiveValue &value : values)
        result += QStringLiteral("        %1: %2,%3\n")
                          .arg(qmlExpression(nameOf(value.key)), qmlExpression(value.value),
                               qmlComment(value.origin));
    return result + QStringLiteral("    })\n");
}

bool isSame(const EffectiveValue *left, const EffectiveValue *right)
{
    return left && right && left->value == right->value;
}

} // namespace

QString ValueFormats::text(const QVariant &value)
{
    if (value.userType() == QMetaType::QColor) {
        const auto color = value.value<QColor>();
        return color.name(color.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
    }
    if (value.userType() == QMetaType::QString)
        return value.toString();
    if (isNumber(value))
        return number(value.toDouble());
    return qmlExpression(value);
}

QString ValueFormats::text(const ValueOrigin &origin)
{
    QString place;
    if (!origin.file.isEmpty()) {
        place = QStringLiteral("%1:%2:%3")
                        .arg(shortPath(origin.file))
                        .arg(origin.position.line)
                        .arg(origin.position.column);
        place += origin.scope == QLatin1String("global")
                ? QStringLiteral(", global")
                : QStringLiteral(", class ") + origin.scope;
        if (!origin.inheritedFrom.isEmpty())
            place += QStringLiteral(", inherited from ") + origin.inheritedFrom;
    }
    switch (origin.kind) {
    case ValueOrigin::Default:
        return QStringLiteral("default: ") + origin.rule;
    case ValueOrigin::Written:
        return place;
    case ValueOrigin::Derived:
        if (!place.isEmpty())
            place = QStringLiteral(" (%1)").arg(place);
        return origin.rule == ValueOrigin::same()
                ? QStringLiteral("as %1%2").arg(origin.base, place)
                : QStringLiteral("from %1, %2%3").arg(origin.base, origin.rule, place);
    case ValueOrigin::File:
        break;
    }
    return shortPath(origin.file)
            + (origin.scope.isEmpty() ? QString() : QStringLiteral(", class ") + origin.scope);
}

QString ValueFormats::shortPath(const QString &file)
{
    const QString relative = QDir::current().relativeFilePath(file);
    return relative.startsWith(QLatin1String("..")) ? file : relative;
}

QString ValueFormats::asText(const EffectiveValues &values, bool colored)
{
    QStringList keys;
    for (const EffectiveValue &value : values.values)
        keys.append(value.key);
    QString result = Words::harmless(headline(values)) + QLatin1Char('\n');
    const QStringList names = groups(keys);
    for (const QString &group : names) {
        Table table;
        QVector<QStringList> patches;
        const QVector<EffectiveValue> entries = inGroup(values, group);
        for (const EffectiveValue &entry : entries) {
            // The address of a style is the same as the file it comes from.
            const QString value = entry.origin.kind == ValueOrigin::File
                    ? QFileInfo(entry.origin.file).fileName()
                    : ::text(entry);
            table.add({ Words::harmless(nameOf(entry.key)), Words::harmless(value),
                        Words::harmless(text(entry.origin)) });
            const bool isPatched = colored && group == QLatin1String("colors");
            patches.append(QStringList{ QString(), isPatched ? patch(entry.value) : QString() });
        }
        result += QLatin1Char('\n');
        if (!keys.contains(group))
            result += group + QLatin1Char('\n');
        result += table.lines(patches);
    }
    return result;
}

QString ValueFormats::asJson(const EffectiveValues &values)
{
    QJsonArray entries;
    for (const EffectiveValue &value : values.values) {
        entries.append(QJsonObject{ { QStringLiteral("key"), value.key },
                                    { QStringLiteral("value"), json(value) },
                                    { QStringLiteral("origin"), json(value.origin) } });
    }
    QJsonObject result = json(values);
    result.insert(QStringLiteral("values"), entries);
    return document(result);
}

QString ValueFormats::asCss(const EffectiveValues &values)
{
    QString selector;
    const QStringList classes = values.classnames.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    for (const QString &name : classes)
        selector += QLatin1Char('.') + cssName(name);
    QString result = cssComment(headline(values)) + QLatin1Char('\n')
            + (selector.isEmpty() ? QStringLiteral(":root") : selector) + QStringLiteral(" {\n");
    for (const EffectiveValue &value : values.values) {
        const QVector<Declaration> declarations = cssDeclarations(value);
        for (const Declaration &declaration : declarations)
            result += QStringLiteral("    %1: %2; %3\n")
                              .arg(declaration.name, declaration.value,
                                   cssComment(text(value.origin)));
    }
    return result + QStringLiteral("}\n");
}

QString ValueFormats::asQml(const EffectiveValues &values)
{
    QString result = QStringLiteral("// %1\nimport QtQuick 2.12\n\nQtObject {\n")
                             .arg(oneLine(headline(values)));
    const auto add = [&](const char *group, auto write) {
        const QVector<EffectiveValue> entries = inGroup(values, QLatin1String(group));
        if (!entries.isEmpty())
            result += write(entries);
    };
    add("colors", qmlColors);
    add("fonts", qmlFonts);
    add("radius", [](const QVector<EffectiveValue> &entries) {
        return QStringLiteral("    readonly property int radius: %1%2\n")
                .arg(qmlExpression(entries.first().value), qmlComment(entries.first().origin));
    });
    add("styles", [](const QVector<EffectiveValue> &entries) { return qmlMap("styles", entries); });
    add("class",
        [](const QVector<EffectiveValue> &entries) { return qmlMap("classValues", entries); });
    return result + QStringLiteral("}\n");
}

QVector<ValueDifference> ValueFormats::differences(const EffectiveValues &left,
                                                   const EffectiveValues &right)
{
    QVector<ValueDifference> result;
    for (const EffectiveValue &value : left.values) {
        const EffectiveValue *other = right.find(value.key);
        if (!isSame(&value, other))
            result.append(ValueDifference{ &value, other });
    }
    for (const EffectiveValue &value : right.values) {
        if (!left.find(value.key))
            result.append(ValueDifference{ nullptr, &value });
    }
    return result;
}

QString ValueFormats::differencesAsText(const EffectiveValues &left, const EffectiveValues &right,
                                        bool colored)
{
    const QVector<ValueDifference> entries = differences(left, right);
    if (entries.isEmpty())
        return QString();
    Table table;
    QVector<QStringList> patches;
    const auto add = [&](const char *mark, const QString &key, const EffectiveValue *value) {
        if (!value) {
            table.add({ QLatin1String(mark), Words::harmless(key), QStringLiteral("none"),
                        QString() });
            patches.append(QStringList());
            return;
        }
        table.add({ QLatin1String(mark), Words::harmless(key), Words::harmless(::text(*value)),
                    Words::harmless(text(value->origin)) });
        patches.append(
                QStringList{ QString(), QString(), colored ? patch(value->value) : QString() });
    };
    for (const ValueDifference &entry : entries) {
        const QString key = entry.left ? entry.left->key : entry.right->key;
        add("-", key, entry.left);
        add("+", key, entry.right);
    }
    return QStringLiteral("--- %1\n+++ %2\n\n")
                   .arg(Words::harmless(headline(left)), Words::harmless(headline(right)))
            + table.lines(patches);
}

QString ValueFormats::differencesAsJson(const EffectiveValues &left, const EffectiveValues &right)
{
    const auto side = [](const EffectiveValue *value) {
        if (!value)
            return QJsonValue();
        return QJsonValue(QJsonObject{ { QStringLiteral("value"), json(*value) },
                                       { QStringLiteral("origin"), json(value->origin) } });
    };
    QJsonArray array;
    const QVector<ValueDifference> entries = differences(left, right);
    for (const ValueDifference &entry : entries) {
        array.append(QJsonObject{
                { QStringLiteral("key"), entry.left ? entry.left->key : entry.right->key },
                { QStringLiteral("left"), side(entry.left) },
                { QStringLiteral("right"), side(entry.right) } });
    }
    return document({ { QStringLiteral("left"), json(left) },
                      { QStringLiteral("right"), json(right) },
                      { QStringLiteral("differences"), array } });
}
