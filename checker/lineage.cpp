#include "checker/lineage.h"

#include "checker/loadedfolder.h"
#include "theme/theme.h"

#include <algorithm>

namespace {

const QLatin1String globalKey("global");
const QLatin1String titleKey("title");

} // namespace

bool FoundScope::isEffective() const
{
    return document && !document->object().value(name).toObject().isEmpty();
}

QJsonValue FoundScope::value(const QStringList &path) const
{
    if (!document)
        return QJsonValue(QJsonValue::Undefined);
    QJsonValue result = document->object().value(name);
    for (const QString &step : path)
        result = result.toObject().value(step);
    return result;
}

Position FoundScope::position(const QStringList &path) const
{
    const Node *node = document ? &document->root() : nullptr;
    const QStringList steps = QStringList(name) + path;
    for (const QString &step : steps) {
        const Node::Member *member = node ? node->member(step) : nullptr;
        node = member ? &member->node : nullptr;
    }
    return node ? document->position(node->range.begin) : Position();
}

Lineage::Lineage(const LoadedFolder &folder, const Theme *theme)
{
    // Themes with one title may seem to extend each other, though loading never follows a ring.
    const auto isKnown = [this](const QString &file) {
        return std::any_of(
                m_generations.begin(), m_generations.end(),
                [&file](const Generation &generation) { return generation.file == file; });
    };
    while (theme && !isKnown(theme->filename())) {
        m_generations.push_back(
                { theme->title(), theme->filename(), Document::read(theme->filename()) });
        const QString parent =
                m_generations.back().document.object().value(QLatin1String("extends")).toString();
        theme = parent.isEmpty() ? nullptr : folder.titled(parent);
    }
}

FoundScope Lineage::global() const
{
    for (const Generation &generation : m_generations) {
        FoundScope scope = found(generation, globalKey);
        if (scope.isEffective())
            return scope;
    }
    return FoundScope();
}

FoundScope Lineage::classScope(const QString &name) const
{
    if (name == globalKey || name == titleKey)
        return FoundScope();
    for (const Generation &generation : m_generations) {
        // An empty scope hides the one that would be inherited.
        if (generation.document.object().contains(name))
            return found(generation, name);
    }
    return FoundScope();
}

QStringList Lineage::classNames() const
{
    QStringList names;
    for (const Generation &generation : m_generations) {
        const QJsonObject document = generation.document.object();
        for (auto member = document.begin(); member != document.end(); ++member) {
            if (member.key() != globalKey && member.value().isObject())
                names.append(member.key());
        }
    }
    return names;
}

FoundScope Lineage::own() const
{
    return found(m_generations.front(), titleKey);
}

FoundScope Lineage::found(const Generation &generation, const QString &name) const
{
    const bool isOwn = &generation == &m_generations.front();
    return { name, &generation.document, generation.file, isOwn ? QString() : generation.title };
}
