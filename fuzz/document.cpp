#include "fuzz/session.h"
#include "fuzz/targets.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QStringList>

namespace {

const char parentDocument[] =
        R"({"title": "Parent", "global": {"radius": 7, "colors": {"foreground": "#102030"}},
            "button": {"colors": {"background": "#405060"}}})";

int expectedRadius(const QJsonObject &document, bool hasParent)
{
    const QJsonObject global = document.value(QLatin1String("global")).toObject();
    if (global.isEmpty())
        return hasParent ? 7 : 0;
    return qMax(0, global.value(QLatin1String("radius")).toInt(-1));
}

void checkClassScopes(const Theme &theme, const QJsonObject &document)
{
    // Walked through, not looked up: Qt's parser (seen in 5.15.8) sorts keys that hold a NUL in an
    // order in which it can't find them.
    QHash<QString, QJsonObject> expected;
    for (auto member = document.constBegin(); member != document.constEnd(); ++member)
        expected.insert(member.key(), member.value().toObject());
    expected.remove(QStringLiteral("global"));
    expected.remove(QStringLiteral("title"));

    const ThemePrivate *data = FuzzSession::data(theme);
    for (auto scope = expected.constBegin(); scope != expected.constEnd(); ++scope) {
        FuzzSession::check(data->classScopes.value(scope.key()) == scope.value(),
                           "each member of the document is a class scope");
    }
    FuzzSession::check(!data->classScopes.contains(QStringLiteral("global"))
                               && !data->classScopes.contains(QStringLiteral("title")),
                       "\"global\" and \"title\" are no classes");
}

/// An item with each class of the document by itself, and then with all of them.
void showClasses(Theme *item, const QJsonObject &document)
{
    QStringList names;
    const QStringList keys = document.keys().mid(0, 16);
    for (const QString &key : keys) {
        names.append(key);
        item->setClassnames(key);
        const QStringList members = document.value(key).toObject().keys().mid(0, 4);
        for (const QString &member : members) {
            item->getClassValue(member, 1);
            item->getClassValue(member + QLatin1String("/foreground"), 1);
        }
        const QColor contrast = item->complementaryColor(item->colors()->background());
        FuzzSession::check(contrast == QColor(Qt::white) || contrast == QColor(Qt::black),
                           "the contrast color is white or black");
    }
    item->setClassnames(names.join(QLatin1Char(' ')));
}

} // namespace

void fuzzDocument(const std::uint8_t *bytes, std::size_t size)
{
    FuzzSession session;
    auto *parent = new Theme(session.manager());
    parent->load(session.write(QStringLiteral("parent.thm"), parentDocument));
    session.manager()->addTheme(parent);

    const QByteArray text(reinterpret_cast<const char *>(bytes), int(size));
    const QString path = session.write(QStringLiteral("input.thm"), text);
    const QJsonObject document = QJsonDocument::fromJson(text).object();
    const QString extends = document.value(QLatin1String("extends")).toString();
    const bool hasParent = extends == QLatin1String("Parent");

    Theme theme;
    theme.setTitle(QStringLiteral("before"));
    const int status = theme.load(path);
    if (text.isEmpty() || (!extends.isEmpty() && !hasParent)) {
        FuzzSession::check(status == (text.isEmpty() ? 1 : 2), "the status tells what is wrong");
        FuzzSession::check(theme.title() == QLatin1String("before"), "the title stays");
        FuzzSession::check(FuzzSession::sameValues(theme, Theme()), "the values stay");
        return;
    }
    FuzzSession::check(status == 0, "the file was read and applied");
    FuzzSession::check(theme.title() == document.value(QLatin1String("title")).toString(),
                       "the title is that of the document");
    FuzzSession::check(theme.radius() == expectedRadius(document, hasParent),
                       "the radius is that of the document");
    checkClassScopes(theme, document);

    QObject owner;
    Theme *item = Theme::qmlAttachedProperties(&owner);
    session.manager()->setCurrent(&theme);
    FuzzSession::check(FuzzSession::sameValues(*item, theme), "the item shows the current theme");
    showClasses(item, document);

    FuzzSession::check(theme.reload() == 0, "the file can be read again");
    Theme fresh;
    fresh.load(theme.filename());
    FuzzSession::check(FuzzSession::sameValues(theme, fresh), "reading twice changes nothing");
    item->setClassnames(QString());
    FuzzSession::check(FuzzSession::sameValues(*item, theme), "the item follows the reading");
    FuzzSession::settle();
}
