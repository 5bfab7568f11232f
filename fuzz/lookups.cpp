#include "fuzz/inputreader.h"
#include "fuzz/session.h"
#include "fuzz/targets.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QStringList>

namespace {

const char *const classes[] = { "a", "b", "ab", "A", "a\tb", "", "ä", "global", "title", "a/b" };
const char *const members[] = { "colors", "fonts",      "radius", "x",  "y", "",
                                "x/y",    "foreground", "main",   "h1", " " };
const char *const texts[] = { "red", "#12345678", "", "transparent", "x", "Sans", "smallCaps" };
const char *const separators[] = { " ", "  ", "\t", "\n", "" };
const char *const slashes[] = { "/", "//", "" };
const char *const styleNames[] = { "Button", "Button_a", "Button_b", "_a", "Card", "", "Card_a_b" };

const int maximalDepth = 4;

QJsonObject object(InputReader &input, int depth);

QJsonValue value(InputReader &input, int depth)
{
    switch (input.below(depth < maximalDepth ? 8 : 6)) {
    case 0:
        return QJsonValue();
    case 1:
        return input.yes();
    case 2:
        return input.below(256) - 128;
    case 3:
        return input.below(256) / 16.0;
    case 4:
        return input.oneOf(texts);
    case 5:
        return QJsonArray{ input.oneOf(texts) };
    default:
        return object(input, depth + 1);
    }
}

QJsonObject object(InputReader &input, int depth)
{
    QJsonObject result;
    for (int count = input.below(5); count > 0; --count) {
        const QString key = input.oneOf(members);
        result.insert(key, value(input, depth));
    }
    return result;
}

QString classNames(InputReader &input)
{
    QString names;
    for (int count = input.below(5); count > 0; --count) {
        names += input.oneOf(classes);
        names += input.oneOf(separators);
    }
    return names;
}

QString path(InputReader &input)
{
    QString path = input.oneOf(slashes);
    for (int count = input.below(4); count > 0; --count) {
        path += input.oneOf(members);
        path += input.oneOf(slashes);
    }
    return path;
}

/// What the look-ups must answer, worked out step by step from plain tables.
struct Model
{
    QHash<QString, QJsonObject> scopes;
    QHash<QString, QString> styles;
    QString names;

    QJsonObject decidingScope() const
    {
        const QStringList list = names.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        for (const QString &name : list) {
            if (!scopes.value(name).isEmpty())
                return scopes.value(name);
        }
        return QJsonObject();
    }

    QVariant classValue(const QString &path, const QVariant &defaultValue) const
    {
        QStringList list = names.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const QStringList segments = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
        for (; !list.isEmpty(); list.removeLast()) {
            QJsonValue current = scopes.value(list.last());
            bool found = !segments.isEmpty();
            for (const QString &segment : segments) {
                found = found && current.isObject() && current.toObject().contains(segment);
                current = current.toObject().value(segment);
            }
            if (found)
                return current.isNull() ? QVariant() : current.toVariant();
        }
        return defaultValue;
    }

    QString style(const QString &style, const QString &classnames) const
    {
        QStringList list = classnames.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        for (; !list.isEmpty(); list.removeLast()) {
            QString url = styles.value(style + QLatin1Char('_') + list.last());
            if (!url.isEmpty())
                return url;
        }
        return styles.value(style);
    }
};

void checkClassnames(Theme *item, Model &model, const QString &names)
{
    int changes = 0;
    int rebuilds = 0;
    const auto countChange = QObject::connect(item, &Theme::classnamesChanged,
                                              [&changes] { ++changes; });
    const auto countRebuild = QObject::connect(item, &Theme::themeObjectChanged,
                                               [&rebuilds] { ++rebuilds; });
    const int expected = names == model.names ? 0 : 1;
    item->setClassnames(names);
    QObject::disconnect(countChange);
    QObject::disconnect(countRebuild);
    model.names = names.trimmed();
    FuzzSession::check(item->classnames() == model.names, "class names are stored trimmed");
    FuzzSession::check(changes == expected && rebuilds == expected,
                       "other class names are told of once, the same ones never");
}

/// Compares with a theme that reads the deciding scope by itself, on top of the item's values.
void checkShownValues(const Theme *item, const Theme &base, const Model &model)
{
    Theme expected;
    FuzzSession::data(expected)->operator=(*FuzzSession::data(base));
    expected.loadThemeScope(&expected, model.decidingScope(), false);
    expected.setRadius(base.radius());
    FuzzSession::check(FuzzSession::sameValues(*item, expected),
                       "the first class with a scope decides");
}

} // namespace

void fuzzLookups(const std::uint8_t *data, std::size_t size)
{
    FuzzSession session;
    InputReader input(data, size);

    QJsonObject document;
    for (int count = input.below(6); count > 0; --count) {
        const QString name = input.oneOf(classes);
        document.insert(name, object(input, 0));
    }
    Model model;
    for (auto member = document.constBegin(); member != document.constEnd(); ++member) {
        if (member.key() != QLatin1String("global") && member.key() != QLatin1String("title"))
            model.scopes.insert(member.key(), member.value().toObject());
    }
    for (int count = input.below(6); count > 0; --count) {
        const QString name = input.oneOf(styleNames);
        model.styles.insert(name, input.yes() ? QLatin1String("file:///") + name : QString());
    }

    Theme *global = Theme::global();
    global->read(document, true);
    FuzzSession::data(*global)->styles = model.styles;
    QObject owners[2];
    Theme *items[] = { Theme::qmlAttachedProperties(&owners[0]),
                       Theme::qmlAttachedProperties(&owners[1]) };
    Model models[] = { model, model };

    while (!input.atEnd()) {
        const int which = input.below(2);
        Theme *item = items[which];
        Model &expected = models[which];
        const QString names = classNames(input);
        switch (input.below(6)) {
        case 0:
            checkClassnames(item, expected, names);
            checkShownValues(item, *global, expected);
            break;
        case 1:
            FuzzSession::check(item->hasClassname(names)
                                       == expected.names.split(QLatin1Char(' '), Qt::KeepEmptyParts)
                                                  .contains(names),
                               "a class name is found whole");
            break;
        case 2: {
            const QString where = path(input);
            FuzzSession::check(item->getClassValue(where, 42) == expected.classValue(where, 42),
                               "the value comes from the last class that has the path");
            break;
        }
        case 3: {
            const QString style = input.oneOf(styleNames);
            FuzzSession::check(item->getStyle(style, names) == expected.style(style, names),
                               "the style is that of the last class that has one");
            break;
        }
        case 4:
            // Written by QML or native code; every item must follow at the next update.
            global->colors()->setForeground(QColor(input.oneOf(texts)));
            Q_EMIT FuzzSession::data(*global)->updateTheme();
            checkShownValues(item, *global, expected);
            break;
        default:
            FuzzSession::settle();
        }
    }
}
