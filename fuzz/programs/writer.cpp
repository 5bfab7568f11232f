#include "fuzz/programs/writer.h"

#include <QtCore/QScopedValueRollback>

#include <cstddef>

namespace {

const int objectLimit = 14;
const int depthLimit = 3;

const char *const classLists[] = { "",      "warning", "quiet",      "quiet warning",
                                   "other", "wide",    "other quiet" };

const char *const colorMembers[] = { "foreground", "background", "selection", "lighterBackground" };
const char *const fontMembers[] = { "mainFont", "h1Font", "h4Font" };
const char *const colorValues[] = { "\"red\"", "\"#123456\"", "\"transparent\"",
                                    "Qt.rgba(0.1, 0.2, 0.3, 0.4)" };

const char *const typeNames[] = { "QtObject",  "Item",     "Text",      "Rectangle", "Loader",
                                  "Repeater",  "ListView", "Popup",     "Menu",      "Instantiator",
                                  "Window",    "TabBar",   "SwipeView", "StackView", "",
                                  "TabButton", "MenuItem" };

/// Things that change while a program runs, as numbers. The theme itself is none of them: an object
/// that is being destroyed has no attached objects any more, while bindings on their properties are
/// still evaluated.
const char *const changing[] = { "root.tick", "root.tick", "root.tick",
                                 "ThemeManager.currentIndex" };

QByteArray quoted(const char *text)
{
    return '"' + QByteArray(text) + '"';
}

} // namespace

ProgramWriter::ProgramWriter(quint64 seed, const QSet<int> &dropped)
    : m_random(seed)
    , m_dropped(dropped)
    , m_objectsLeft(3 + number(objectLimit - 2))
{
    m_text = program();
}

int ProgramWriter::number(int limit)
{
    return int(m_random() % quint64(limit));
}

bool ProgramWriter::chance(int percent)
{
    return number(100) < percent;
}

template <typename Value, std::size_t count>
const Value &ProgramWriter::any(const Value (&values)[count])
{
    return values[number(int(count))];
}

bool ProgramWriter::isKept()
{
    return !m_dropped.contains(m_parts++);
}

QByteArray ProgramWriter::indented(const QByteArray &text)
{
    QByteArray result;
    const QList<QByteArray> lines = text.split('\n');
    for (const QByteArray &line : lines) {
        if (!line.isEmpty())
            result += "    " + line + '\n';
    }
    return result;
}

QByteArray ProgramWriter::program()
{
    QByteArray body = "id: root\n"
                      "width: 200; height: 200\n"
                      "property int tick: 0\n"
                      "property var made: []\n"
                      // What was made may have been destroyed natively meanwhile.
                      "function destroyMade() { try { made.pop().destroy() } catch (gone) {} }\n"
                      "function make() { made.push(Qt.createQmlObject('%IMPORTS% Item {"
                      " property QtObject mark: Mark {}; %PROBE% }', root)) }\n";
    body += makers();
    while (m_objectsLeft > 0)
        body += object(Kind(number(KindCount)), 0, QByteArray());
    body += outerConnections();
    for (int i = 0; i < actionCount; ++i)
        body += function("act", i);
    for (int i = 0; i < mildActionCount; ++i)
        body += function("mild", i);
    const int steps = 2 + number(stepLimit - 1);
    for (int i = 0; i < steps; ++i)
        body += function("step", i);
    return "Item {\n" + indented(body) + "}\n";
}

/// A function with some statements; nothing if none of them is kept.
QByteArray ProgramWriter::function(const QByteArray &name, int index)
{
    const QScopedValueRollback<bool> isMild(m_isMild, name == "mild");
    const QByteArray body = statements(1 + number(3));
    if (body.isEmpty())
        return QByteArray();
    return "function " + name + QByteArray::number(index) + "() {\n" + indented(body) + "}\n";
}

/// An object of the program's document, with an id while that document is the one that is written.
QByteArray ProgramWriter::object(Kind kind, int depth, const QByteArray &container)
{
    --m_objectsLeft;
    const bool isPart = isKept();
    m_absentDepth += isPart ? 0 : 1;
    QByteArray id;
    QByteArray body;
    if (m_componentDepth == 0) {
        id = "o" + QByteArray::number(m_ids++);
        body += "id: " + id + '\n';
        m_objects.append({ kind, id, container, m_absentDepth == 0 });
    }
    // An object that shows nothing may turn to its theme only when it ends.
    const bool showsTheme = kind == Text || m_isInMaker || !chance(6);
    if (showsTheme) {
        body += "property QtObject mark: Mark {}\n%PROBE%\n";
        body += bindings();
        body += handlers();
    } else {
        body += "Component.onDestruction: fuzz.note(Theme.radius)\n";
    }
    body += content(kind, depth, id);
    m_absentDepth -= isPart ? 0 : 1;
    if (!isPart)
        return QByteArray();

    QByteArray text = QByteArray(typeNames[kind]) + " {\n" + indented(body) + "}\n";
    // Where only items are expected, others need a property that holds them.
    const bool isItem = kind != Plain && kind != Popup && kind != Menu && kind != Instantiator;
    if (!isItem && container.isEmpty())
        text = "property QtObject p" + QByteArray::number(m_parts) + ": " + text;
    return text;
}

/// An object in a component of its own, whose ids are nobody else's business.
QByteArray ProgramWriter::componentObject(Kind kind, int depth, Owner owner)
{
    ++m_componentDepth;
    // A component needs its object, so that is not a part to be left out.
    --m_objectsLeft;
    QByteArray body = owner == View ? "property QtObject mark: Mark { isOwned: true }\n"
                                    : "property QtObject mark: Mark {}\n";
    if (kind != Plain)
        body += "width: 20; height: 20\n";
    body += "%PROBE%\n";
    body += bindings();
    body += handlers();
    body += content(kind, depth + 1, QByteArray());
    --m_componentDepth;
    return QByteArray(typeNames[kind]) + " {\n" + indented(body) + "}\n";
}

QByteArray ProgramWriter::content(Kind kind, int depth, const QByteArray &id)
{
    static const Kind itemKinds[] = { Item, Text, Rectangle, Item, Loader, Repeater, TabBar };
    const auto itemKind = [&] { return itemKinds[number(depth < depthLimit ? 7 : 4)]; };
    const auto model = [this] {
        return chance(25) ? QByteArray("(root.tick % 3 + 1)") : QByteArray::number(1 + number(3));
    };
    QByteArray text;
    switch (kind) {
    case Plain:
        break;
    case Text:
        return "text: \"text\"; color: shownForeground; font: shownMainFont\n";
    case Item:
    case Rectangle:
        return children(depth);
    case Loader:
        if (chance(25))
            text += "active: root.tick % 2\n";
        if (chance(20))
            text += "asynchronous: true\n";
        return text + "sourceComponent: Component {\n"
                + indented(componentObject(itemKind(), depth, View)) + "}\n";
    case Repeater:
        text = "model: " + model() + '\n';
        return text + componentObject(itemKind(), depth, View);
    case ListView:
        text = "width: 100; height: 60; model: " + model() + " * 5\n";
        if (chance(40))
            text += "reuseItems: true\n";
        return text + "delegate: " + componentObject(itemKind(), depth, View);
    case Instantiator:
        text = "model: " + model() + '\n';
        return text + componentObject(chance(50) ? Plain : Item, depth, View);
    case Popup:
        if (chance(50))
            text = "visible: true\n";
        return text + children(depth);
    case Window:
        text = "width: 50; height: 50\n";
        if (chance(50))
            text += "visible: true\n";
        return text + children(depth);
    case Menu:
    case TabBar:
    case SwipeView: {
        const Kind child = kind == Menu ? MenuItem : kind == TabBar ? TabButton : Item;
        const int count = 1 + number(3);
        for (int i = 0; i < count; ++i)
            text += object(child, depth + 1, id.isEmpty() ? QByteArray("-") : id);
        return text;
    }
    case StackView:
        return "width: 50; height: 50\ninitialItem: Component {\n"
                + indented(componentObject(Item, depth, View)) + "}\n";
    case KindCount:
    case TabButton:
    case MenuItem:
        break;
    }
    return text;
}

QByteArray ProgramWriter::children(int depth)
{
    QByteArray text;
    if (depth >= depthLimit)
        return text;
    for (int count = number(3); count > 0 && m_objectsLeft > 0; --count)
        text += object(Kind(number(KindCount)), depth + 1, QByteArray());
    return text;
}

QByteArray ProgramWriter::classnames()
{
    const QByteArray source = any(changing);
    QByteArray one = quoted(any(classLists));
    const QByteArray other = quoted(any(classLists));
    if (chance(30))
        return one;
    return source + " % 2 ? " + one + " : " + other;
}

/// What an object binds beside the values that it shows.
QByteArray ProgramWriter::bindings()
{
    QByteArray text;
    const auto add = [&](int percent, const QByteArray &line) {
        if (chance(percent) && isKept())
            text += line + '\n';
    };
    add(60, "Theme.classnames: " + classnames());
    add(8, "Theme.radius: root.tick % 7");
    add(6, "Theme.title: \"title \" + root.tick");
    add(8, "property string style: Theme.getStyle(\"Button\", Theme.classnames)");
    add(8, "property bool isQuiet: Theme.hasClassname(root.tick % 2 ? \"quiet\" : \"warning\")");
    add(8, "property color readable: Theme.complementaryColor(Theme.colors.background)");
    add(12,
        "property QtObject group: Theme.colors;"
        " property color heldForeground: group ? group.foreground : \"black\"");
    return text;
}

QByteArray ProgramWriter::handlers()
{
    // The signals here are others than those in outerConnections(), whose handlers may delete this
    // object: an engine does not survive that while a handler of the same signal waits in it.
    static const char *const themeSignals[] = { "ThemeObjectChanged", "ClassnamesChanged",
                                                "TitleChanged" };
    static const char *const ownSignals[] = { "onShownForegroundChanged", "onShownMainFontChanged",
                                              "onShownRadiusChanged", "Component.onCompleted",
                                              "Component.onDestruction" };
    static const char *const targets[][2] = { { "ThemeManager", "Current" },
                                              { "Theme.colors", "LighterForeground" },
                                              { "Theme.colors", "DarkerBackground" },
                                              { "Theme.fonts", "H3Font" } };
    QByteArray text;
    const auto add = [&](int percent, const QByteArray &line) {
        if (chance(percent) && isKept())
            text += line + '\n';
    };
    const QByteArray themeSignal = any(themeSignals);
    add(25, "Theme.on" + themeSignal + ": " + handlerBody());
    // The last one is left out where the garbage collector may call it: an engine does not survive
    // that its sweep runs code which makes garbage of its own.
    const QByteArray ownSignal = ownSignals[number(m_isInMaker ? 4 : 5)];
    QByteArray body = handlerBody();
    if (ownSignal.startsWith("Component."))
        body = "{ fuzz.runMildly(" + QByteArray::number(number(actionCount)) + ") }";
    add(10, ownSignal + ": " + body);
    // Groups change, and a target must not once the object is garbage.
    const auto &target = targets[m_isInMaker ? 0 : number(4)];
    add(10,
        "property QtObject c" + QByteArray::number(m_parts)
                + ": Connections { target: " + QByteArray(target[0]) + "; function on"
                + QByteArray(target[1]) + "Changed() " + handlerBody() + " }");
    return text;
}

QByteArray ProgramWriter::handlerBody()
{
    static const char *const ownStatements[] = { "Theme.colors.selection = \"red\"",
                                                 "Theme.fonts.h2Font = Qt.font({ pointSize: 7 })",
                                                 "Theme.radius = 3" };
    const QByteArray own = any(ownStatements);
    const bool writesClass = chance(40);
    const QByteArray list = any(classLists);
    const QByteArray run = "runGently(" + QByteArray::number(number(actionCount)) + ") }";
    if (!chance(20))
        return "{ fuzz." + run;
    // An object that is about to be destroyed has no attached objects any more, and one that has
    // gone from its view meanwhile knows no names.
    return "{ let stage = fuzz; if (Theme && stage.mayAct()) "
            + (writesClass ? "Theme.classnames = " + quoted(list) : own) + "; stage." + run;
}

/// Handlers that outlive the objects whose themes they listen to. Their targets are set while
/// nothing else runs: an engine does not survive that the target of a running handler changes in
/// an event loop.
QByteArray ProgramWriter::outerConnections()
{
    static const char *const groups[][3] = {
        { "o.Theme.colors", "onForegroundChanged", "Theme.colors.foreground" },
        { "o.Theme.colors", "onBackgroundChanged", "Theme.colors.background" },
        { "o.Theme.colors", "onSelectionChanged", "Theme.colors.selection" },
        { "o.Theme.fonts", "onMainFontChanged", "Theme.fonts.mainFont" },
        { "o.Theme.fonts", "onH1FontChanged", "Theme.fonts.h1Font" },
        { "fuzz.themeOf(o)", "onRadiusChanged", "Theme.radius" },
        { "fuzz.themeOf(o)", "onNeedUpdate", "Theme.classnames" },
    };
    QByteArray text = "property QtObject heard: null\n";
    const int count = 1 + number(3);
    for (int i = 0; i < count; ++i) {
        const QByteArray index = QByteArray::number(i);
        const auto &group = any(groups);
        const QByteArray action = QByteArray::number(number(actionCount));
        m_heardProperties.append(group[2]);
        text += "Connections { id: c" + index + "; target: null; function " + group[1]
                + "() { fuzz.run(" + action + ") } }\n" + "function listen" + index
                + "(o) { if (o && fuzz.isIdle()) { heard = o; c" + index + ".target = " + group[0]
                + " } }\n";
    }
    return text;
}

/// Has a connection listen to an object's theme, and most often brings its signal about.
QByteArray ProgramWriter::listeningStatement()
{
    const QByteArray id = anyObject()->id;
    const int index = number(m_heardProperties.size());
    const QByteArray property = m_heardProperties.at(index);
    QByteArray statement = "listen" + QByteArray::number(index) + "(" + id + ")";
    QByteArray value = QByteArray::number(10 + number(50));
    const QByteArray list = any(classLists);
    if (chance(25))
        return statement;
    if (property.startsWith("Theme.colors"))
        value = "\"#0000" + value + "\"";
    else if (property.startsWith("Theme.fonts"))
        value = "Qt.font({ pointSize: " + value + " })";
    else if (property == "Theme.classnames")
        value = quoted(list);
    return statement + "; if (" + id + ") " + id + "." + property + " = " + value;
}

QByteArray ProgramWriter::makers()
{
    m_makerCount = 1 + number(2);
    QByteArray text;
    const QScopedValueRollback<bool> isInMaker(m_isInMaker, true);
    for (int i = 0; i < m_makerCount; ++i) {
        text += "Component {\n    id: m" + QByteArray::number(i) + '\n'
                + indented(componentObject(chance(70) ? Item : TabButton, depthLimit - 1, Anybody))
                + "}\n";
    }
    return text;
}

QByteArray ProgramWriter::statements(int count)
{
    QByteArray text;
    for (; count > 0; --count) {
        m_refersToAbsent = false;
        const QByteArray line = statement();
        if (isKept() && !m_refersToAbsent)
            text += line + '\n';
    }
    return text;
}

QByteArray ProgramWriter::statement()
{
    if (m_isMild)
        return chance(75) ? themeStatement() : objectStatement();
    const int kind = number(100);
    if (kind < 23)
        return themeStatement();
    if (kind < 33)
        return objectStatement();
    if (kind < 45)
        return listeningStatement();
    if (kind < 62)
        return containerStatement();
    if (kind < 75)
        return deathStatement();
    if (kind < 85)
        return makerStatement();
    if (kind < 92)
        return "fuzz.loop(" + QByteArray::number(number(actionCount)) + ")";
    if (kind < 95)
        return "Qt.callLater(() => fuzz.run(" + QByteArray::number(number(actionCount)) + "))";
    return chance(50) ? "gc()" : "root.tick++";
}

QByteArray ProgramWriter::themeStatement()
{
    const QByteArray n = QByteArray::number(number(6));
    if (!m_isMild && chance(6))
        return chance(50) ? "fuzz.deleteTheme(" + n + ")" : QByteArray("fuzz.deleteGlobalTheme()");
    switch (number(8)) {
    case 0:
    case 1:
        return "ThemeManager.currentIndex = fuzz.row(" + n + ")";
    case 2:
    case 3:
        return "ThemeManager.setCurrent(fuzz.theme(" + n + "))";
    case 4:
        return "ThemeManager.loadThemes(fuzz.folder(), fuzz.title())";
    case 5:
        return "fuzz.reload()";
    case 6:
        return "fuzz.save()";
    default:
        return m_isMild ? "fuzz.save()" : "root.tick++";
    }
}

QByteArray ProgramWriter::objectStatement()
{
    const Object *object = anyObject();
    const QByteArray id = object->id;
    switch (number(7)) {
    case 0:
    case 1:
        return "if (" + id + ") " + id + ".Theme.classnames = " + quoted(any(classLists));
    case 2:
        return "if (" + id + ") " + id + ".Theme.radius = " + QByteArray::number(number(50));
    case 3: {
        const QByteArray member = any(colorMembers);
        return "if (" + id + ") " + id + ".Theme.colors." + member + " = " + any(colorValues);
    }
    case 4: {
        const QByteArray member = any(fontMembers);
        return "if (" + id + ") " + id + ".Theme.fonts." + member
                + " = Qt.font({ pointSize: " + QByteArray::number(5 + number(20)) + " })";
    }
    case 5: {
        const Object *child = anyObject({ Item, Text, Rectangle, Loader, Repeater });
        const Object *parent = anyObject({ Item, Rectangle });
        if (!child || !parent || child == parent)
            return "gc()";
        return "fuzz.reparent(" + child->id + ", " + parent->id + ")";
    }
    default:
        return "fuzz.disconnect(" + id + ")";
    }
}

QByteArray ProgramWriter::containerStatement()
{
    const Object *object = anyObject({ Loader, Repeater, ListView, Popup, Menu, Instantiator,
                                       Window, TabBar, SwipeView, StackView });
    if (!object)
        return "root.tick++";
    const QByteArray id = object->id;
    const QByteArray guard = "if (" + id + ") ";
    const QByteArray n = QByteArray::number(number(4));
    const QByteArray maker = "m" + QByteArray::number(number(m_makerCount));
    switch (object->kind) {
    case Loader:
        return guard + id + ".active = !" + id + ".active";
    case Repeater:
    case Instantiator:
        return guard + id + ".model = " + n;
    case ListView:
        return chance(50) ? guard + id + ".model = " + n + " * 7" : guard + id + ".contentY += 25";
    case Popup:
    case Menu:
        if (object->kind == Menu && chance(40))
            return guard + id + ".removeItem(" + id + ".itemAt(0))";
        return guard + "{ if (" + id + ".visible) " + id + ".close(); else " + id + ".open() }";
    case Window:
        return guard + id + ".visible = !" + id + ".visible";
    case TabBar:
    case SwipeView:
        switch (number(3)) {
        case 0:
            return guard + id + ".removeItem(" + id + ".itemAt(0))";
        case 1:
            return guard + id + ".takeItem(0)";
        default:
            return guard + id + ".addItem(" + maker + ".createObject(" + id + "))";
        }
    case StackView:
        switch (number(3)) {
        case 0:
            return guard + id + ".push(" + maker + ", StackView.Immediate)";
        case 1:
            return guard + id + ".pop(StackView.Immediate)";
        default:
            return guard + id + ".clear()";
        }
    default:
        return "root.tick++";
    }
}

/// Ends an object, most often with a change of what is bound while it goes.
QByteArray ProgramWriter::deathStatement()
{
    QByteArray text;
    const Object *object = anyObject();
    const Object *contained = anyObject({ TabButton, MenuItem });
    const bool endsHeard = chance(25);
    switch (number(3)) {
    case 0:
        text = "fuzz.kill(" + (endsHeard ? "root.heard" : object->id) + ")";
        break;
    case 1:
        text = "fuzz.deleteLater(" + object->id + ")";
        break;
    default:
        text = contained && contained->container != "-"
                ? "if (" + contained->container + " && " + contained->id + ") "
                        + contained->container + ".removeItem(" + contained->id + ")"
                : "fuzz.killAny(" + QByteArray::number(number(20)) + ")";
    }
    switch (number(4)) {
    case 0:
        return text + "; Qt.callLater(() => root.tick++)";
    case 1:
        return text + "; Qt.callLater(() => fuzz.run(" + QByteArray::number(number(actionCount))
                + "))";
    case 2:
        return text + "; root.tick++";
    default:
        return text;
    }
}

QByteArray ProgramWriter::makerStatement()
{
    const QByteArray maker = "m" + QByteArray::number(number(m_makerCount));
    switch (number(6)) {
    case 0:
        return "root.made.push(" + maker + ".createObject(root))";
    case 1:
        return "root.made.push(" + maker + ".createObject(null))";
    case 2:
        return "make()";
    case 3:
        return "root.made = []; gc()";
    case 4:
        return maker + ".createObject(null); gc()";
    default:
        return "destroyMade()";
    }
}

const ProgramWriter::Object *ProgramWriter::anyObject()
{
    const Object *object = &m_objects.at(number(m_objects.size()));
    m_refersToAbsent = m_refersToAbsent || !object->isPresent;
    return object;
}

/// An object of one of \a kinds; null if there is none.
const ProgramWriter::Object *ProgramWriter::anyObject(const QSet<int> &kinds)
{
    QVector<const Object *> objects;
    for (const Object &object : qAsConst(m_objects)) {
        if (kinds.contains(object.kind))
            objects.append(&object);
    }
    if (objects.isEmpty())
        return nullptr;
    const Object *object = objects.at(number(objects.size()));
    m_refersToAbsent = m_refersToAbsent || !object->isPresent;
    return object;
}
