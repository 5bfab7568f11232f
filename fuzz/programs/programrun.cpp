#include "fuzz/programs/programrun.h"

#include "fuzz/programs/stage.h"
#include "fuzz/programs/standin.h"
#include "fuzz/programs/writer.h"
#include "manager/thememanager.h"
#include "reliability/themelook.h"
#include "support/objectcount.h"
#include "support/receivers.h"
#include "theme/theme.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QHash>
#include <QtCore/QMetaMethod>
#include <QtCore/QTimer>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <functional>
#include <memory>
#include <new>

namespace {

const int finalSeed = 19;
const int settlingTurns = 6;
const int creationTimeLimit = 5000;

/// What the engine answers when a handler changes what the running binding was computed from, what
/// popups say where they are not in a window, and what Qt's timer of animations says when a window
/// goes in the turn in which it came, which depends on the machine's speed.
const char *const expectedMessages[] = {
    "Binding loop detected",
    "cannot find any window to open popup in",
    "QUnifiedTimer::stopAnimationDriver: driver is not running",
};

QStringList messages;

void handleMessage(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtFatalMsg) {
        fprintf(stderr, "fatal: %s\n", qPrintable(message));
        return;
    }
    for (const char *const expected : expectedMessages) {
        if (message.contains(QLatin1String(expected)))
            return;
    }
    messages.append(message);
}

/// Lets \a function run in an event loop, as all of an application does, and what it has put off.
void turn(const std::function<void()> &function = nullptr)
{
    QEventLoop loop;
    QTimer::singleShot(0, &loop, [&] {
        if (function)
            function();
        QTimer::singleShot(0, &loop, [&] { QTimer::singleShot(0, &loop, &QEventLoop::quit); });
    });
    loop.exec();
}

void settle()
{
    for (int i = 0; i < settlingTurns; ++i)
        turn();
}

/// The connections of all signals of \a object, QML's own not counted.
int connectionCount(const QObject *object)
{
    int count = 0;
    // Signals' names have the digit in front that SIGNAL() puts there.
    const QMetaObject *type = object->metaObject();
    for (int i = 0; i < type->methodCount(); ++i) {
        if (type->method(i).methodType() == QMetaMethod::Signal)
            count += receiverCount(object, ('2' + type->method(i).methodSignature()).constData());
    }
    return count;
}

/// The connections of what all items share.
int sharedConnections()
{
    const Theme *global = Theme::global();
    return connectionCount(global->colors()) + connectionCount(global->fonts())
            + connectionCount(global->colors()->parent());
}

/// A catalogue as in a process that has just started.
void renewCatalogue()
{
    ThemeManager *manager = ThemeManager::getInstance();
    manager->~ThemeManager();
    settle();
    new (manager) ThemeManager;
    QQmlEngine::setObjectOwnership(manager, QQmlEngine::CppOwnership);
}

class Run
{
public:
    Run(const QByteArray &program, Subject subject)
        : m_program(program)
        , m_subject(subject)
    {
    }

    QStringList problems();

private:
    void play();
    void perform(QQmlEngine *engine, Stage *stage);
    void runSteps(QObject *root, Stage *stage);
    void checkLooks(QQmlEngine *engine, Stage *stage);
    std::unique_ptr<QObject> create(QQmlEngine *engine, const QByteArray &program);
    void fail(const QString &kind, const QString &text);

    const QByteArray m_program;
    const Subject m_subject;
    QStringList m_problems;
};

void Run::fail(const QString &kind, const QString &text)
{
    m_problems.append(kind + QLatin1String(": ") + text);
}

std::unique_ptr<QObject> Run::create(QQmlEngine *engine, const QByteArray &program)
{
    QQmlComponent component(engine);
    component.setData(programDocument(program, m_subject), QUrl());
    if (component.isError()) {
        fail(QStringLiteral("document"), component.errorString());
        return nullptr;
    }
    return std::unique_ptr<QObject>(component.create());
}

void Run::runSteps(QObject *root, Stage *stage)
{
    stage->setActing(true);
    for (int i = 0; i < ProgramWriter::stepLimit; ++i)
        turn([&] { Stage::callIn(root, "step", i); });
    settle();
    stage->setActing(false);
    QElapsedTimer time;
    time.start();
    while (stage->isCreating() && time.elapsed() < creationTimeLimit)
        turn();
}

void Run::checkLooks(QQmlEngine *engine, Stage *stage)
{
    turn([engine] { engine->collectGarbage(); });
    settle();
    QString title;
    const QString path = stage->writeTheme(QStringLiteral("last"), finalSeed, &title);
    ThemeManager::getInstance()->loadThemes(path.left(path.lastIndexOf(QLatin1Char('/'))), title);
    if (ThemeManager::getInstance()->current()->title() != title)
        fail(QStringLiteral("switch"), QStringLiteral("the last theme is not the current one"));

    const auto objects = stage->shown();
    QHash<QString, ThemeLook> expected;
    for (QObject *object : objects) {
        const QString classnames = Theme::attachedTheme(object)->classnames();
        if (!expected.contains(classnames)) {
            const auto item = create(engine, "Item { %PROBE% }");
            Theme::attachedTheme(item.get())->setClassnames(classnames);
            expected.insert(classnames, ThemeLook::ofProbe(item.get()));
            if (classnames.isEmpty()
                && !(expected.value(classnames) == ThemeLook::ofSeed(finalSeed)))
                fail(QStringLiteral("look"), QStringLiteral("a new item does not show the theme"));
        }
        const ThemeLook look = expected.value(classnames);
        const ThemeLook shown = ThemeLook::ofProbe(object);
        const QVariant color = object->property("heldForeground");
        const bool isRight = shown == look
                && ThemeLook::ofTheme(Theme::attachedTheme(object)) == look
                && (!color.isValid() || color.value<QColor>() == look.colors.first());
        if (isRight)
            continue;
        const QQmlContext *context = qmlContext(object);
        fail(QStringLiteral("look"),
             QStringLiteral("%1 %2 with the class names \"%3\" shows\n%4 (held: %5)\nnot\n%6")
                     .arg(QLatin1String(object->metaObject()->className()),
                          context ? context->nameForObject(object) : QString(), classnames,
                          shown.text(), color.toString(), look.text()));
    }
}

void Run::perform(QQmlEngine *engine, Stage *stage)
{
    QQuickWindow window;
    window.resize(200, 200);
    window.show();
    std::unique_ptr<QObject> root = create(engine, m_program);
    if (!root)
        return;
    qobject_cast<QQuickItem *>(root.get())->setParentItem(window.contentItem());
    stage->setRoot(root.get());
    settle();
    runSteps(root.get(), stage);
    if (m_subject == Subject::Plugin)
        checkLooks(engine, stage);
    root.reset();
    settle();
    turn([engine] { engine->collectGarbage(); });
    settle();
}

void Run::play()
{
    const bool usesStandIn = m_subject == Subject::StandIn;
    renewCatalogue();
    const int connections = sharedConnections();
    StandInManager standIn;
    Stage stage(usesStandIn);
    {
        QQmlEngine engine;
        engine.addImportPath(QStringLiteral(TAVOLINS_QML_IMPORT_PATH));
        engine.rootContext()->setContextProperty(QStringLiteral("fuzz"), &stage);
        perform(&engine, &stage);
    }
    settle();
    const int left = sharedConnections() - connections;
    if (left != 0)
        fail(QStringLiteral("connections"), QStringLiteral("%1 are left over").arg(left));
}

/// All objects that there are, but for pictures that Qt keeps for half a minute lest it has to read
/// them again.
int lastingObjects(const ObjectCount &objects)
{
    QQuickWindow().releaseResources();
    settle();
    return objects.value();
}

QStringList Run::problems()
{
    const ObjectCount objects;
    messages.clear();
    const QtMessageHandler previous = qInstallMessageHandler(handleMessage);
    renewCatalogue();
    settle();
    const int before = lastingObjects(objects);
    play();
    renewCatalogue();
    settle();
    const int more = lastingObjects(objects) - before;
    if (more != 0)
        fail(QStringLiteral("objects"), QStringLiteral("%1 are left over").arg(more));
    qInstallMessageHandler(previous);
    for (const QString &message : qAsConst(messages))
        fail(QStringLiteral("log"), message);
    return m_problems;
}

} // namespace

QByteArray programDocument(const QByteArray &program, Subject subject)
{
    QByteArray imports = "import QtQml 2.15; import QtQuick 2.15; import QtQuick.Window 2.15;"
                         " import QtQuick.Controls 2.15; import Fuzz 1.0; import ";
    imports += subject == Subject::Plugin ? TAVOLINS_QML_URI " 1.0;" : "StandIn 1.0;";
    const QByteArray probe = probeText().trimmed().replace('\n', "; ");
    return imports + '\n'
            + QByteArray(program).replace("%IMPORTS%", imports).replace("%PROBE%", probe);
}

QStringList runProgram(const QByteArray &program, Subject subject)
{
    static const bool isRegistered = [] {
        qmlRegisterType<Mark>("Fuzz", 1, 0, "Mark");
        StandInManager::registerTypes();
        // What Qt makes once in a process and keeps.
        Run("Item { function step0() { fuzz.reload() } Popup { visible: true } Menu { visible: "
            "true; MenuItem {} }"
            " Window { visible: true } ListView { model: 3; delegate: Text { text: \"a\" } } }",
            Subject::Plugin)
                .problems();
        return true;
    }();
    Q_UNUSED(isRegistered)
    return Run(program, subject).problems();
}
