#include "itemscenario.h"

#include "contender.h"
#include "evaluations.h"
#include "look.h"
#include "phase.h"
#include "tests/support/heap.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QStringList>
#include <QtCore/QVector>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlProperty>
#include <QtQuick/QQuickItem>

#include <algorithm>
#include <memory>
#include <random>

namespace {

constexpr int partCount = 4;
/// Qt removes an item from its parent by searching the parent's list, so no parent has many.
constexpr int itemsPerHolder = 100;
constexpr int warmUpItems = 20;
/// There and back, so that both directions count alike.
constexpr int measuredSwitches = 2;

const char *const bindingNames[] = { "color", "border", "corner", "face" };

/// The QML text of the items of a scenario.
class ItemText
{
public:
    ItemText(const Contender &contender, bool countEvaluations)
        : m_contender(contender)
        , m_counts(countEvaluations)
    {
    }

    QByteArray root() const
    {
        return document(
                QStringLiteral("%1 {\n%2\n}\n").arg(m_contender.rootType, m_contender.rootLines));
    }

    QByteArray item(const QString &shape) const
    {
        if (shape == QLatin1String("two"))
            return document(itself({ 0, 1 }, QString()));
        if (shape == QLatin1String("parts-each"))
            return document(
                    itself({ 0, 1, 2, 3 }, itself({ 0, 1, 2, 3 }, QString()).repeated(partCount)));
        if (shape == QLatin1String("parts-root"))
            return document(delegateReadingOnce());
        return document(itself({ 0, 1, 2, 3 }, QString()));
    }

private:
    QByteArray document(const QString &object) const
    {
        const QString imports = QStringLiteral("import QtQuick 2.15\nimport Bench 1.0\n");
        return (imports + m_contender.imports + QLatin1Char('\n') + object).toUtf8();
    }

    QStringList expressions() const
    {
        return { m_contender.background, m_contender.foreground, m_contender.corner,
                 m_contender.face };
    }

    bool isRectangle() const { return m_contender.itemType == QLatin1String("Rectangle"); }

    /// Where each of the four values goes. Types that can't take it get a property of their own.
    QStringList targets() const
    {
        const QString property = QStringLiteral("property %1 %2");
        const QString color = QStringLiteral("color");
        return {
            isRectangle() ? color : property.arg(color, QStringLiteral("ground")),
            isRectangle() ? QStringLiteral("border.color")
                          : property.arg(color, QStringLiteral("line")),
            m_contender.cornerType == QLatin1String("radius")
                    ? m_contender.cornerType
                    : property.arg(m_contender.cornerType, QStringLiteral("corner")),
            property.arg(m_contender.faceType, QStringLiteral("face")),
        };
    }

    /// Constants of the plain item. QML has none for fonts.
    QString constant(int binding) const
    {
        const bool isRadius = binding == 2 && m_contender.cornerType == QLatin1String("radius");
        return isRadius ? QStringLiteral("4") : QStringLiteral("\"#f0f0f4\"");
    }

    QString line(int binding, const QString &expression) const
    {
        const QString target = targets().at(binding);
        if (expression.isEmpty()) {
            const bool isFont = binding == 3 && m_contender.faceType == QLatin1String("font");
            return isFont ? target : target + QStringLiteral(": ") + constant(binding);
        }
        return target + bound(binding, expression);
    }

    QString bound(int binding, const QString &expression) const
    {
        if (!m_counts)
            return QStringLiteral(": ") + expression;
        return QStringLiteral(": { Evaluations.count(%1); return %2 }")
                .arg(binding)
                .arg(expression);
    }

    /// An item that reads the theme itself.
    QString itself(const QVector<int> &bindings, const QString &children) const
    {
        QStringList lines{ m_contender.itemLines };
        for (int binding : bindings)
            lines.append(line(binding, expressions().at(binding)));
        return QStringLiteral("%1 {\n%2\n%3}\n")
                .arg(m_contender.itemType, lines.join(QLatin1Char('\n')), children);
    }

    /// A delegate that reads the theme once, with parts that bind to what it read.
    QString delegateReadingOnce() const
    {
        const QString plainRadius = QStringLiteral("radius");
        const QStringList types{ QStringLiteral("color"), QStringLiteral("color"),
                                 m_contender.cornerType == plainRadius ? QStringLiteral("int")
                                                                       : m_contender.cornerType,
                                 m_contender.faceType };
        QStringList lines{ QStringLiteral("id: delegate"), m_contender.itemLines };
        QStringList partLines;
        for (int binding = 0; binding < types.size(); ++binding) {
            const QString expression = expressions().at(binding);
            const QString kept = QStringLiteral("kept%1").arg(binding);
            QString use;
            if (!expression.isEmpty()) {
                const QString own = QStringLiteral("readonly property %1 ").arg(types.at(binding));
                lines.append(own + kept + bound(binding, expression));
                use = QStringLiteral("delegate.") + kept;
            }
            lines.append(line(binding, use));
            partLines.append(line(binding, use));
        }
        const QString part = QStringLiteral("%1 {\n%2\n}\n")
                                     .arg(m_contender.itemType, partLines.join(QLatin1Char('\n')));
        return QStringLiteral("%1 {\n%2\n%3}\n")
                .arg(m_contender.itemType, lines.join(QLatin1Char('\n')), part.repeated(partCount));
    }

    const Contender &m_contender;
    bool m_counts;
};

/// What is read back from an item to see whether it shows what it should.
QVariantList shownBy(const QObject *item, const QString &shape)
{
    QStringList names{
        item->property("ground").isValid() ? QStringLiteral("ground") : QStringLiteral("color"),
        item->property("line").isValid() ? QStringLiteral("line") : QStringLiteral("border.color")
    };
    if (shape != QLatin1String("two")) {
        names.append(item->property("corner").isValid() ? QStringLiteral("corner")
                                                        : QStringLiteral("radius"));
        names.append(QStringLiteral("face"));
    }
    QVariantList values;
    for (const QString &name : qAsConst(names))
        values.append(QQmlProperty::read(item, name));
    return values;
}

QVariantList shownByItemAndParts(const QQuickItem *item, const QString &shape)
{
    QVariantList values = shownBy(item, shape);
    const QList<QQuickItem *> parts = item->childItems();
    if (!parts.isEmpty())
        values.append(shownBy(parts.last(), shape));
    return values;
}

QString text(const QVariantList &values)
{
    QStringList texts;
    for (const QVariant &value : values)
        texts.append(value.toString());
    return texts.join(QLatin1Char(' '));
}

/// The items of a scenario while it runs.
class Stage
{
public:
    Stage(const ItemScenario &scenario, QQmlEngine *engine)
        : m_scenario(scenario)
        , m_component(engine)
    {
        const ItemText text(*scenario.contender,
                            scenario.measurement == ItemScenario::Measurement::Evaluations);
        QQmlComponent rootComponent(engine);
        rootComponent.setData(text.root(), QUrl());
        m_root.reset(qobject_cast<QQuickItem *>(rootComponent.create()));
        m_component.setData(text.item(scenario.shape), QUrl());
        m_error = m_root ? m_component.errorString() : rootComponent.errorString();
    }

    QString error() const { return m_error; }

    void addHolders(int itemCount)
    {
        const int holderCount = (itemCount + itemsPerHolder - 1) / itemsPerHolder;
        for (int i = 0; i < holderCount; ++i) {
            auto *holder = new QQuickItem(m_root.get());
            holder->setParent(m_root.get());
            m_holders.append(holder);
        }
        m_items.reserve(itemCount);
    }

    /// Creates an item as Qt's own views do: it has its parent before its bindings are evaluated.
    QQuickItem *create(QQuickItem *holder)
    {
        QObject *object = m_component.beginCreate(qmlContext(m_root.get()));
        auto *item = static_cast<QQuickItem *>(object);
        item->setParent(holder);
        item->setParentItem(holder);
        m_component.completeCreate();
        return item;
    }

    void createAll(int count)
    {
        for (int i = 0; i < count; ++i)
            m_items.append(create(m_holders.at(i / itemsPerHolder)));
        settle();
    }

    void show(int look)
    {
        m_scenario.contender->show(look, m_root.get());
        settle();
    }

    /// Has code compiled and caches filled before anything is measured.
    void warmUp()
    {
        QVector<QQuickItem *> items;
        for (int i = 0; i < warmUpItems; ++i)
            items.append(create(m_root.get()));
        settle();
        if (m_scenario.contender->show) {
            for (int look : { 1, 0, 1, 0 })
                show(look);
        }
        qDeleteAll(items);
        settle();
    }

    /// What an item that is created now shows.
    QVariantList shownByNewItem()
    {
        const std::unique_ptr<QQuickItem> probe(create(m_root.get()));
        settle();
        return shownByItemAndParts(probe.get(), m_scenario.shape);
    }

    QString checkItems(int look)
    {
        const QVariantList expected = shownByNewItem();
        settle();
        if (m_scenario.contender->showsLooks && !showsLook(expected, look))
            return QStringLiteral("items do not show look %1").arg(look);
        const int count = int(m_items.size());
        for (int index : { 0, count / 2, count - 1 }) {
            const QVariantList shown = shownByItemAndParts(m_items.at(index), m_scenario.shape);
            if (shown != expected) {
                return QStringLiteral("item %1 does not show look %2 but %3; a new one shows %4")
                        .arg(index)
                        .arg(look)
                        .arg(text(shown), text(expected));
            }
        }
        for (int i = 0; i < m_lastShown.size(); ++i) {
            if (m_lastShown.at(i) == expected.at(i))
                return QStringLiteral("value %1 is the same in both looks").arg(i);
        }
        m_lastShown = expected;
        return QString();
    }

    void reload()
    {
        m_scenario.contender->reload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void rewrite(int look) { m_scenario.contender->rewrite(look); }

    void sortForDestruction()
    {
        if (m_scenario.order == ItemScenario::DestroyOrder::Reverse)
            std::reverse(m_items.begin(), m_items.end());
        if (m_scenario.order == ItemScenario::DestroyOrder::Random) {
            std::mt19937 generator(1);
            std::shuffle(m_items.begin(), m_items.end(), generator);
        }
    }

    void destroyAll()
    {
        for (QQuickItem *item : qAsConst(m_items))
            delete item;
        m_items.clear();
        settle();
    }

private:
    static bool showsLook(const QVariantList &values, int index)
    {
        const Look &look = Look::at(index);
        if (values.at(0).value<QColor>() != look.background
            || values.at(1).value<QColor>() != look.foreground)
            return false;
        if (values.size() < 4)
            return true;
        const QFont font = values.at(3).value<QFont>();
        return values.at(2).toInt() == look.radius && font.family() == look.font.family()
                && font.pointSize() == look.font.pointSize();
    }

    const ItemScenario m_scenario;
    QQmlComponent m_component;
    std::unique_ptr<QQuickItem> m_root;
    QString m_error;
    QVector<QQuickItem *> m_holders;
    QVector<QQuickItem *> m_items;
    QVariantList m_lastShown;
};

QJsonObject failure(const QString &kind, const QString &text)
{
    return { { kind, text.simplified() } };
}

/// Switches there and back. \return the first thing found wrong.
QString switchAndCheck(Stage *stage, Phase *change)
{
    QString error = stage->checkItems(0);
    for (int i = 1; i <= measuredSwitches && error.isEmpty(); ++i) {
        const int look = i % lookCount;
        change->begin();
        stage->show(look);
        change->end();
        error = stage->checkItems(look);
    }
    return error;
}

QJsonObject measureLife(const ItemScenario &scenario, Stage *stage)
{
    QJsonObject result;
    const double count = scenario.count;

    if (scenario.measurement == ItemScenario::Measurement::Destruction) {
        stage->createAll(scenario.count);
    } else {
        Phase create("create");
        const qint64 heapBefore = heapInUse();
        create.begin();
        stage->createAll(scenario.count);
        create.end();
        result.insert(QStringLiteral("heap"), double(heapInUse() - heapBefore) / count);
        result.insert(QStringLiteral("create_ns"), create.finish() / count);
    }
    if (scenario.contender->show && scenario.measurement == ItemScenario::Measurement::Life) {
        Phase change("switch");
        const QString error = switchAndCheck(stage, &change);
        if (!error.isEmpty())
            return failure(QStringLiteral("error"), error);
        result.insert(QStringLiteral("switches"), measuredSwitches);
        result.insert(QStringLiteral("switch_ns"), change.finish() / count / measuredSwitches);
    }
    stage->sortForDestruction();
    Phase destroy("destroy");
    destroy.begin();
    stage->destroyAll();
    destroy.end();
    result.insert(QStringLiteral("destroy_ns"), destroy.finish() / count);
    return result;
}

/// Reads the current theme's file anew while the items live, changed each time. The watcher would
/// do the same from the event loop, which does not run meanwhile.
QJsonObject measureReload(const ItemScenario &scenario, Stage *stage)
{
    stage->createAll(scenario.count);
    QString error = stage->checkItems(0);
    Phase reload("reload");
    for (int i = 1; i <= measuredSwitches && error.isEmpty(); ++i) {
        const int look = i % lookCount;
        stage->rewrite(look);
        reload.begin();
        stage->reload();
        reload.end();
        error = stage->checkItems(look);
    }
    if (!error.isEmpty())
        return failure(QStringLiteral("error"), error);
    return { { QStringLiteral("switches"), measuredSwitches },
             { QStringLiteral("reload_ns"), reload.finish() / scenario.count / measuredSwitches } };
}

/// The evaluations of each binding in one switch, averaged over the items.
QJsonObject countEvaluations(const ItemScenario &scenario, Stage *stage)
{
    stage->createAll(scenario.count);
    QString error = stage->checkItems(0);
    if (!error.isEmpty())
        return failure(QStringLiteral("error"), error);
    Evaluations::instance()->clear();
    stage->show(1);
    const QVector<int> counts = Evaluations::instance()->counts();
    error = stage->checkItems(1);
    if (!error.isEmpty())
        return failure(QStringLiteral("error"), error);
    QJsonObject result;
    for (int binding = 0; binding < counts.size(); ++binding) {
        result.insert(QLatin1String(bindingNames[binding]),
                      double(counts.at(binding)) / scenario.count);
    }
    return { { QStringLiteral("evaluations"), result } };
}

} // namespace

QStringList ItemScenario::shapes()
{
    return { QStringLiteral("four"), QStringLiteral("two"), QStringLiteral("parts-each"),
             QStringLiteral("parts-root") };
}

QJsonObject ItemScenario::run() const
{
    QQmlEngine engine;
    engine.addImportPath(QStringLiteral(TAVOLINS_QML_IMPORT_PATH));
    contender->prepare(&engine);
    Stage stage(*this, &engine);
    if (!stage.error().isEmpty()) {
        const bool isMissing = contender->isPeer
                && stage.error().contains(QLatin1String("is not installed"));
        const QString kind = isMissing ? QStringLiteral("unavailable") : QStringLiteral("error");
        return failure(kind, stage.error());
    }
    stage.warmUp();
    stage.addHolders(count);
    switch (measurement) {
    case Measurement::Evaluations:
        return countEvaluations(*this, &stage);
    case Measurement::Reload:
        return measureReload(*this, &stage);
    case Measurement::Life:
    case Measurement::Destruction:
        break;
    }
    return measureLife(*this, &stage);
}
