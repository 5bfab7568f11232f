// Takes one measurement and prints what it found as one line of JSON. scripts/bench runs many of
// them, each in a process of its own, and makes the tables.

#include "callscenario.h"
#include "contender.h"
#include "controlscenario.h"
#include "evaluations.h"
#include "itemscenario.h"
#include "loadscenario.h"
#include "yardsticks.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlEngine>

#include <cstdio>
#include <cstdlib>
#include <initializer_list>
#include <utility>

namespace {

[[noreturn]] void stop(const QString &message)
{
    std::fprintf(stderr, "tavolins-bench: %s\n", qPrintable(message));
    std::exit(2);
}

template <typename Type>
QObject *sharedInstance(QQmlEngine *, QJSEngine *)
{
    QQmlEngine::setObjectOwnership(Type::instance(), QQmlEngine::CppOwnership);
    return Type::instance();
}

void registerTypes()
{
    // Each yardstick is imported from a module beside the bench's own, as the plugin and its peers
    // are: the engine searches the imported modules one after the other for every name it meets.
    const char *const bench = "Bench";
    const char *const module = "Yardsticks";
    const QString reason = QStringLiteral("attached property");
    const QUrl qmlSource(QStringLiteral("qrc:/bench/QmlSource.qml"));
    qmlRegisterSingletonType<LookSource>(module, 1, 0, "LookSource", sharedInstance<LookSource>);
    qmlRegisterSingletonType<Evaluations>(bench, 1, 0, "Evaluations", sharedInstance<Evaluations>);
    qmlRegisterSingletonType(qmlSource, module, 1, 0, "QmlSource");
    qmlRegisterUncreatableType<BareAttached>(module, 1, 0, "Bare", reason);
    qmlRegisterUncreatableType<FloorAttached>(module, 1, 0, "Floor", reason);
    qmlRegisterAnonymousType<FloorColors>(module, 1);
    qmlRegisterAnonymousType<FloorFonts>(module, 1);
}

/// The command line. Whatever it does not understand ends the process with a message.
class Arguments
{
public:
    Arguments()
    {
        m_parser.setApplicationDescription(
                QStringLiteral("Takes one measurement and prints it as JSON."));
        m_parser.addHelpOption();
        m_parser.addPositionalArgument(QStringLiteral("what"),
                                       QStringLiteral("items, load, calls or list"));
        add("contender", "items: who shows the theme.", "tavolins");
        add("shape", "items: how an item is built.", "four");
        add("measure", "items: life, destruction, evaluations or reload.", "life");
        add("look", "controls, page: the style of the controls.", "Tavolins");
        add("differ", "page: in what the two themes differ, colors or all.", "colors");
        add("order", "items: destroy in the order of creation, in reverse or at random.",
            "creation");
        add("reader", "load: tavolins, checker or json, the floor.", "tavolins");
        add("folder", "load: what the folder holds.", "plain");
        add("count", "How many items, themes, calls or controls of each kind.", "1000");
        m_parser.process(*QCoreApplication::instance());
    }

    QString what() const { return m_parser.positionalArguments().value(0); }
    QString value(const char *name) const { return m_parser.value(QLatin1String(name)); }

    int count() const
    {
        const int count = value("count").toInt();
        if (count < 1)
            stop(QStringLiteral("--count has to be a number above zero"));
        return count;
    }

    QString oneOf(const char *name, const QStringList &allowed) const
    {
        if (!allowed.contains(value(name))) {
            stop(QStringLiteral("--%1 has to be one of: %2")
                         .arg(QLatin1String(name), allowed.join(QStringLiteral(", "))));
        }
        return value(name);
    }

    template <typename Enum>
    Enum choice(const char *name,
                std::initializer_list<std::pair<const char *, Enum>> choices) const
    {
        QStringList allowed;
        for (const auto &choice : choices) {
            if (value(name) == QLatin1String(choice.first))
                return choice.second;
            allowed.append(QLatin1String(choice.first));
        }
        oneOf(name, allowed);
        return Enum();
    }

private:
    void add(const char *name, const char *description, const char *defaultValue)
    {
        m_parser.addOption({ QLatin1String(name), QLatin1String(description), QLatin1String(name),
                             QLatin1String(defaultValue) });
    }

    QCommandLineParser m_parser;
};

QJsonObject runItems(const Arguments &arguments)
{
    typedef ItemScenario::Measurement Measurement;
    typedef ItemScenario::DestroyOrder DestroyOrder;
    ItemScenario scenario;
    scenario.contender = Contender::named(arguments.oneOf("contender", Contender::names()));
    scenario.shape = arguments.oneOf("shape", ItemScenario::shapes());
    scenario.count = arguments.count();
    scenario.measurement = arguments.choice<Measurement>(
            "measure",
            {
                    { "life", Measurement::Life },
                    { "destruction", Measurement::Destruction },
                    { "evaluations", Measurement::Evaluations },
                    { "reload", Measurement::Reload },
            });
    scenario.order = arguments.choice<DestroyOrder>("order",
                                                    {
                                                            { "creation", DestroyOrder::Creation },
                                                            { "reverse", DestroyOrder::Reverse },
                                                            { "random", DestroyOrder::Random },
                                                    });
    return scenario.run();
}

QJsonObject runLoad(const Arguments &arguments)
{
    typedef LoadScenario::Reader Reader;
    LoadScenario scenario;
    scenario.reader = arguments.choice<Reader>("reader",
                                               { { "tavolins", Reader::Tavolins },
                                                 { "json", Reader::Json },
                                                 { "checker", Reader::Checker } });
    scenario.folder = arguments.oneOf("folder", LoadScenario::folders());
    scenario.count = arguments.count();
    return scenario.run();
}

QJsonObject runCalls(const Arguments &arguments)
{
    CallScenario scenario;
    scenario.count = arguments.count();
    return scenario.run();
}

ControlScenario controlScenario(const Arguments &arguments)
{
    ControlScenario scenario;
    scenario.style = arguments.oneOf("look", ControlScenario::styles());
    scenario.count = arguments.count();
    scenario.fontsDiffer = arguments.choice<bool>("differ",
                                                  { { "colors", false }, { "all", true } });
    return scenario;
}

QJsonObject runControls(const Arguments &arguments)
{
    return controlScenario(arguments).create();
}

QJsonObject runPage(const Arguments &arguments)
{
    return controlScenario(arguments).switchPage();
}

QJsonObject list(const Arguments &)
{
    return {
        { QStringLiteral("contenders"), QJsonArray::fromStringList(Contender::names()) },
        { QStringLiteral("shapes"), QJsonArray::fromStringList(ItemScenario::shapes()) },
        { QStringLiteral("styles"), QJsonArray::fromStringList(ControlScenario::styles()) },
        { QStringLiteral("folders"), QJsonArray::fromStringList(LoadScenario::folders()) },
        { QStringLiteral("uri"), QStringLiteral(TAVOLINS_QML_URI) },
        { QStringLiteral("qt"), QLatin1String(qVersion()) },
    };
}

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    const Arguments arguments;
    registerTypes();

    const std::pair<const char *, QJsonObject (*)(const Arguments &)> commands[] = {
        { "items", runItems },       { "load", runLoad }, { "calls", runCalls },
        { "controls", runControls }, { "page", runPage }, { "list", list },
    };
    for (const auto &command : commands) {
        if (arguments.what() != QLatin1String(command.first))
            continue;
        const QJsonObject result = command.second(arguments);
        std::puts(QJsonDocument(result).toJson(QJsonDocument::Compact).constData());
        return result.contains(QLatin1String("error")) ? 1 : 0;
    }
    stop(QStringLiteral(
            "say what to measure: items, load, calls, controls or page; --help tells more"));
}
