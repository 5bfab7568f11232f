#include "support/randomthemes.h"

#include <QtCore/QList>

#include <utility>

namespace {

const QList<QByteArray> titles{ "A", "B", "C", "D" };
const QList<QByteArray> classes{ "alpha", "beta", "gamma" };

/// \a members as the text of an object.
QByteArray object(const QList<QByteArray> &members)
{
    return '{' + members.join(", ") + '}';
}

QByteArray member(const QByteArray &name, const QByteArray &value)
{
    return '"' + name + "\": " + value;
}

} // namespace

RandomThemes::RandomThemes(unsigned seed)
    : m_engine(seed)
{
}

int RandomThemes::below(int count)
{
    // Not a distribution of the library: those differ from one to the next.
    return int(m_engine() % unsigned(count));
}

bool RandomThemes::chance(int percent)
{
    return below(100) < percent;
}

template <typename Choices>
auto RandomThemes::oneOf(const Choices &choices)
{
    return choices.at(below(int(choices.size())));
}

QByteArray RandomThemes::color()
{
    static const QList<QByteArray> special{ "\"#80ff0000\"",
                                            "\"#0f0\"",
                                            "\"steelblue\"",
                                            "\"transparent\"",
                                            "\"no color\"",
                                            "\"\"",
                                            "7",
                                            "null",
                                            "{}" };
    if (chance(30))
        return oneOf(special);
    return "\"#" + QByteArray::number(0x1000000 + below(0x1000000), 16).mid(1) + '"';
}

QByteArray RandomThemes::colors()
{
    if (chance(5))
        return "[]";
    QList<QByteArray> members;
    for (const char *name :
         { "foreground", "lighterForeground", "darkerForeground", "background", "lighterBackground",
           "darkerBackground", "selection", "lighterSelection" }) {
        if (chance(35))
            members.append(member(name, color()));
    }
    return object(members);
}

QByteArray RandomThemes::font()
{
    if (chance(10))
        return oneOf(QList<QByteArray>{ "{}", "\"DejaVu Sans\"", "null" });
    const QList<std::pair<QByteArray, QList<QByteArray>>> keys{
        { "family", { "\"DejaVu Sans\"", "\"DejaVu Serif\"", "\"Nowhere Installed\"", "3" } },
        { "pointSize", { "16", "13.5", "1", "0", "-4", "\"12\"" } },
        { "weight", { "\"Bold\"", "\"Book\"", "\"bold\"", "\"\"", "75" } },
        { "bold", { "true", "false" } },
        { "italic", { "true", "false", "\"true\"" } },
        { "capitalization",
          { "\"SmallCaps\"", "\"alluppercase\"", "\"Capitalize\"", "\"small caps\"", "1" } },
        { "letterSpacing", { "2", "-0.5", "0", "\"2\"" } },
    };
    QList<QByteArray> members;
    for (const auto &key : keys) {
        if (chance(40))
            members.append(member(key.first, oneOf(key.second)));
    }
    return object(members);
}

QByteArray RandomThemes::fonts()
{
    QList<QByteArray> members;
    for (const char *name : { "main", "alternate", "h1", "h2", "h3", "h4" }) {
        if (chance(45))
            members.append(member(name, font()));
    }
    return object(members);
}

QByteArray RandomThemes::scope(bool isClass)
{
    if (chance(10))
        return oneOf(QList<QByteArray>{ "{}", "5", "\"text\"" });
    QList<QByteArray> members;
    if (chance(70))
        members.append(member("colors", colors()));
    if (chance(50))
        members.append(member("fonts", fonts()));
    if (chance(50))
        members.append(member("radius",
                              oneOf(QList<QByteArray>{ "4", "9.0", "0", "-1", "2.5", "\"4\"" })));
    if (isClass && chance(60))
        members.append(member("spacing",
                              oneOf(QList<QByteArray>{ "{\"small\": 4, \"large\": 8.5}",
                                                       "{\"small\": null}", "{\"small\": {}}", "7",
                                                       "{\"small\": [1, true, \"x\"]}" })));
    return object(members);
}

QByteArray RandomThemes::theme()
{
    if (chance(4))
        return oneOf(QList<QByteArray>{ "", "[]", "{\"title\": \"A\",}", "{" });
    QList<QByteArray> members;
    if (chance(95))
        members.append(member("title", '"' + oneOf(titles) + '"'));
    if (chance(40))
        members.append(member("extends", '"' + oneOf(titles) + '"'));
    if (chance(65))
        members.append(member("global", scope(false)));
    for (const QByteArray &name : classes) {
        if (chance(45))
            members.append(member(name, scope(true)));
    }
    return object(members);
}

QHash<QString, QByteArray> RandomThemes::folder()
{
    QHash<QString, QByteArray> files;
    const int themes = 1 + below(5);
    for (int i = 0; i < themes; ++i)
        files.insert(QStringLiteral("%1.thm").arg(i), theme());
    for (const char *style : { "Button", "Button_alpha", "Button_beta", "Card_gamma", "Field" }) {
        if (chance(30))
            files.insert(QStringLiteral("styles/%1.qml").arg(QLatin1String(style)),
                         "import QtQuick 2.12\nItem {}\n");
    }
    return files;
}

QString RandomThemes::classnames()
{
    QList<QByteArray> names;
    const int count = below(4);
    for (int i = 0; i < count; ++i)
        names.append(oneOf(classes + QList<QByteArray>{ "unknown", "", "global", "title" }));
    return QString::fromLatin1(names.join(' '));
}
