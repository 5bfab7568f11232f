// The subcommands show and diff, as they are run.

#include "checker/effectivevalues.h"
#include "checker/fontweight.h"
#include "checker/loadedfolder.h"
#include "checker/valueformats.h"
#include "support/programrun.h"
#include "support/randomthemes.h"
#include "support/testcase.h"
#include "theme/theme.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtTest/QtTest>

class tst_ShowCommand : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void showsAThemeByFileAndByTitle();
    void showsAsText();
    void showsOneKey_data();
    void showsOneKey();
    void weightsAreNamed();
    void colorsArePatches();
    void jsonHoldsWhatItemsRead();
    void jsonTellsOrigins();
    void cssHoldsTheValues();
    void cssOfAClassHasItsSelector();
    void qmlIsAnObjectWithTheValues();
    void hostileTextsStayInTheirPlaces();
    void wrongUse_data();
    void wrongUse();
    void titleOfAFolder();
    void missingClasses_data();
    void missingClasses();
    void brokenTheme();
    void themeThatIsLeftOut();
    void diffShowsWhatIsNotTheSame();
    void diffOfTheSame();
    void diffOverFolders();
    void diffAsJson();
    void diffWrongUse_data();
    void diffWrongUse();

private:
    ProgramRun run(const QStringList &arguments);
    void writeCoast();
};

namespace {

QJsonObject objectIn(const ProgramRun &run)
{
    return QJsonDocument::fromJson(run.output.toUtf8()).object();
}

QJsonObject valueIn(const QJsonObject &shown, const QString &key)
{
    const QJsonArray values = shown.value(QLatin1String("values")).toArray();
    for (const QJsonValue &value : values) {
        if (value.toObject().value(QLatin1String("key")).toString() == key)
            return value.toObject();
    }
    return QJsonObject();
}

} // namespace

ProgramRun tst_ShowCommand::run(const QStringList &arguments)
{
    return runProgram(QStringLiteral(TOOL_PROGRAM), arguments, folder());
}

void tst_ShowCommand::writeCoast()
{
    write(QStringLiteral("coast.thm"),
          "{\n"
          "    \"title\": \"Coast\",\n"
          "    \"global\": {\n"
          "        \"colors\": { \"foreground\": \"#102030\", \"selection\": \"#80ff0000\" },\n"
          "        \"radius\": 6\n"
          "    },\n"
          "    \"header\": { \"colors\": { \"foreground\": \"#405060\" }, \"gap\": 4 }\n"
          "}\n");
    write(QStringLiteral("harbour.thm"), "{ \"title\": \"Harbour\", \"extends\": \"Coast\" }\n");
    write(QStringLiteral("styles/Button_header.qml"), "import QtQuick 2.12\nItem {}\n");
}

void tst_ShowCommand::showsAThemeByFileAndByTitle()
{
    writeCoast();
    const ProgramRun byFile = run(words("show harbour.thm"));
    QCOMPARE(byFile.errors, QString());
    QCOMPARE(byFile.exitCode, 0);
    const ProgramRun byTitle = run(words("show Harbour"));
    QCOMPARE(byTitle.exitCode, 0);
    QCOMPARE(byTitle.output, byFile.output);
    QVERIFY(QDir(folder()).mkdir(QStringLiteral("elsewhere")));
    const ProgramRun fromElsewhere = runProgram(QStringLiteral(TOOL_PROGRAM),
                                                words("show Harbour --folder .. --key radius"),
                                                folder() + QStringLiteral("/elsewhere"));
    QCOMPARE(fromElsewhere.exitCode, 0);
    QVERIFY(fromElsewhere.output.contains(QLatin1String("radius  6")));
}

void tst_ShowCommand::showsAsText()
{
    writeCoast();
    const ProgramRun result = run({ QStringLiteral("show"), QStringLiteral("harbour.thm"),
                                    QStringLiteral("--class"), QStringLiteral("header") });
    QCOMPARE(result.errors, QString());
    const QStringList lines = result.output.split(QLatin1Char('\n'));
    QCOMPARE(lines.value(0), QStringLiteral("Harbour, harbour.thm, classes: header"));
    const auto hasLine = [&lines](const char *line) {
        return lines.contains(QString::fromLatin1(line));
    };
    QVERIFY(hasLine("colors"));
    QVERIFY(hasLine("  foreground         #405060    coast.thm:7:43, class header, inherited from "
                    "Coast"));
    QVERIFY(hasLine(
            "  lighterForeground  #204060    from colors/foreground, twice as bright, opaque, "
            "as it is without the class (coast.thm:4:35, global, inherited from Coast)"));
    QVERIFY(hasLine(
            "  selection          #80ff0000  coast.thm:4:59, global, inherited from Coast"));
    QVERIFY(hasLine("  radius  6  coast.thm:5:19, global, inherited from Coast"));
    QVERIFY(hasLine("  Button         Button_header.qml  styles/Button_header.qml, class header"));
    QVERIFY(hasLine("  gap  4  coast.thm:7:63, class header, inherited from Coast"));
    QVERIFY(!result.output.contains(QLatin1Char('\033')));
}

void tst_ShowCommand::showsOneKey_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("color")
            << QStringLiteral("colors/selection")
            << QStringList{ QStringLiteral("colors"),
                            QStringLiteral("  selection  #80ff0000  coast.thm:4:59, global") };
    QTest::newRow("radius") << QStringLiteral("radius")
                            << QStringList{ QStringLiteral("  radius  6  coast.thm:5:19, global") };
    QTest::newRow("class value") << QStringLiteral("class/gap")
                                 << QStringList{
                                        QStringLiteral("class"),
                                        QStringLiteral("  gap  4  coast.thm:7:63, class header")
                                    };
    QTest::newRow("class value that is a color of the scope")
            << QStringLiteral("class/colors/foreground")
            << QStringList{ QStringLiteral("class"),
                            QStringLiteral("  colors/foreground  #405060  coast.thm:7:43, class "
                                           "header") };
    QTest::newRow("class value that is an object")
            << QStringLiteral("class/colors")
            << QStringList{ QStringLiteral("class"),
                            QStringLiteral(
                                    "  colors  {\"foreground\":\"#405060\"}  coast.thm:7:27, class "
                                    "header") };
}

void tst_ShowCommand::showsOneKey()
{
    QFETCH(QString, key);
    QFETCH(QStringList, lines);
    writeCoast();
    const ProgramRun result = run({ QStringLiteral("show"), QStringLiteral("coast.thm"),
                                    QStringLiteral("--class=header"), QStringLiteral("--key"),
                                    key });
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.output,
             QStringLiteral("Coast, coast.thm, classes: header\n\n") + lines.join(QLatin1Char('\n'))
                     + QLatin1Char('\n'));
}

/// Qt 5 and Qt 6 have numbers of their own for them.
void tst_ShowCommand::weightsAreNamed()
{
    for (const char *weight : { "Bold", "Book" })
        write(QStringLiteral("%1.thm").arg(QLatin1String(weight)),
              QByteArray("{\"title\": \"") + weight
                      + "\", \"global\": {\"fonts\": {\"main\": {\"family\": \"DejaVu Sans\", "
                        "\"pointSize\": 16, \"weight\": \""
                      + weight + "\"}}}}");
    const ProgramRun text = run(words("show Bold.thm --key fonts/mainFont/weight"));
    QCOMPARE(text.output,
             QStringLiteral("Bold, Bold.thm\n\nfonts\n  mainFont/weight  Bold  "
                            "Bold.thm:1:101, global\n"));
    const auto inJson = [this](const char *theme) {
        const QJsonObject shown = objectIn(run(
                { QStringLiteral("show"), QLatin1String(theme), QStringLiteral("--format=json") }));
        return valueIn(shown, QStringLiteral("fonts/mainFont/weight"))
                .value(QLatin1String("value"))
                .toInt();
    };
    QCOMPARE(inJson("Bold.thm"), 700);
    QCOMPARE(inJson("Book.thm"), 400);
    const QString differences = run(words("diff Bold.thm Book.thm")).output;
    QVERIFY2(differences.contains(QLatin1String("  -  fonts/mainFont/weight       Bold    ")),
             qPrintable(differences));
    QVERIFY2(differences.contains(QLatin1String("  +  fonts/mainFont/weight       Normal  ")),
             qPrintable(differences));
}

void tst_ShowCommand::colorsArePatches()
{
    writeCoast();
    const ProgramRun result = run(words("show coast.thm --key colors/foreground --color always"));
    QCOMPARE(result.output,
             QStringLiteral("Coast, coast.thm\n\ncolors\n  foreground  \033[48;2;16;32;48m  "
                            "\033[0m #102030  coast.thm:4:35, global\n"));
    QVERIFY(!run(words("show coast.thm --color never")).output.contains(QLatin1Char('\033')));
}

/// What items of a real engine read is compared with EffectiveValues elsewhere; here that the
/// command prints just those.
void tst_ShowCommand::jsonHoldsWhatItemsRead()
{
    int compared = 0;
    for (unsigned seed = 5000; seed < 5012; ++seed) {
        RandomThemes random(seed);
        const QHash<QString, QByteArray> files = random.folder();
        QDir(folder()).removeRecursively();
        for (auto file = files.begin(); file != files.end(); ++file)
            write(file.key(), file.value());
        const QString classnames = random.classnames();
        const LoadedFolder themes(folder());
        if (themes.themes().isEmpty())
            continue;
        Theme *theme = themes.themes().constLast();
        const ProgramRun result = run({ QStringLiteral("show"), theme->filename(),
                                        QStringLiteral("--class=") + classnames,
                                        QStringLiteral("--format=json") });
        const QJsonArray shown = objectIn(result).value(QLatin1String("values")).toArray();
        const EffectiveValues values = EffectiveValues::of(themes, theme, classnames);
        QCOMPARE(shown.size(), values.values.size());
        for (int i = 0; i < shown.size(); ++i) {
            const EffectiveValue &value = values.values.at(i);
            const QJsonObject entry = shown.at(i).toObject();
            QCOMPARE(entry.value(QLatin1String("key")).toString(), value.key);
            QJsonValue expected = QJsonValue::fromVariant(value.value);
            if (value.value.userType() == QMetaType::QColor)
                expected = ValueFormats::text(value.value);
            else if (value.key.endsWith(QLatin1String("/weight")))
                expected = FontWeight::number(value.value.toInt());
            QCOMPARE(entry.value(QLatin1String("value")), expected);
            ++compared;
        }
    }
    QVERIFY(compared > 300);
}

void tst_ShowCommand::jsonTellsOrigins()
{
    writeCoast();
    const ProgramRun result = run(words("show harbour.thm --class header --format json"));
    const QJsonObject shown = objectIn(result);
    QCOMPARE(shown.value(QLatin1String("title")).toString(), QStringLiteral("Harbour"));
    QCOMPARE(shown.value(QLatin1String("classes")).toArray(),
             QJsonArray{ QStringLiteral("header") });
    const QJsonObject color = valueIn(shown, QStringLiteral("colors/darkerForeground"));
    QCOMPARE(color.value(QLatin1String("value")).toString(), QStringLiteral("#081018"));
    const QJsonObject expected{
        { QStringLiteral("kind"), QStringLiteral("derived") },
        { QStringLiteral("file"), QString(folder() + QStringLiteral("/coast.thm")) },
        { QStringLiteral("line"), 4 },
        { QStringLiteral("column"), 35 },
        { QStringLiteral("scope"), QStringLiteral("global") },
        { QStringLiteral("inheritedFrom"), QStringLiteral("Coast") },
        { QStringLiteral("base"), QStringLiteral("colors/foreground") },
        { QStringLiteral("rule"),
          QStringLiteral("half as bright, opaque, as it is without the class") },
    };
    QCOMPARE(color.value(QLatin1String("origin")).toObject(), expected);
    const QJsonObject origin = valueIn(shown, QStringLiteral("fonts/mainFont/family"))
                                       .value(QLatin1String("origin"))
                                       .toObject();
    QCOMPARE(origin.value(QLatin1String("kind")).toString(), QStringLiteral("default"));
    QVERIFY(!origin.contains(QLatin1String("file")));
}

void tst_ShowCommand::cssHoldsTheValues()
{
    write(QStringLiteral("a.thm"),
          R"({"title": "A */ B", "global": {"radius": 5,
              "colors": {"foreground": "#102030", "selection": "#80ff0000"},
              "fonts": {"main": {"family": "Quote\"d", "pointSize": 16, "letterSpacing": 1.5,
                                 "capitalization": "SmallCaps", "italic": true}}}})");
    const ProgramRun result = run(words("show a.thm --format css"));
    QCOMPARE(result.exitCode, 0);
    QVERIFY(result.output.startsWith(QLatin1String("/* A * / B, a.thm */\n:root {\n")));
    QVERIFY(result.output.endsWith(QLatin1String("}\n")));
    for (const char *declaration :
         { "--color-foreground: #102030;", "--color-selection: rgba(255, 0, 0, 0.502);",
           "--color-lighter-foreground: #204060;", "--font-main-family: \"Quote\\22 d\";",
           "--font-main-size: 12pt;", "--font-main-letter-spacing: 1.5px;",
           "--font-main-variant: small-caps;", "--font-main-transform: none;",
           "--font-main-style: italic;", "--font-main-weight: 400;", "--radius: 5px;" })
        QVERIFY2(result.output.contains(QLatin1String("\n    ") + QLatin1String(declaration)),
                 declaration);
    QCOMPARE(result.output.count(QLatin1String("*/")), result.output.count(QLatin1String("/*")));
}

void tst_ShowCommand::cssOfAClassHasItsSelector()
{
    write(QStringLiteral("a.thm"),
          R"({"title": "A", "b.c": {"gap": 4.5, "label": "x", "colors": {}}})");
    const ProgramRun result = run({ QStringLiteral("show"), QStringLiteral("a.thm"),
                                    QStringLiteral("--format=css"),
                                    QStringLiteral("--class=b.c 1d") });
    QVERIFY2(result.output.contains(QLatin1String("\n.b\\2e c.\\31 d {\n")),
             qPrintable(result.output.left(80)));
    QVERIFY(result.output.contains(QLatin1String("    --class-gap: 4.5;")));
    QVERIFY(result.output.contains(QLatin1String("    --class-label: \"x\";")));
}

void tst_ShowCommand::qmlIsAnObjectWithTheValues()
{
    write(QStringLiteral("a.thm"),
          R"({"title": "A", "global": {"radius": 5, "colors": {"selection": "#80ff0000"},
              "fonts": {"main": {"family": "DejaVu Serif", "pointSize": 15, "italic": true,
                                 "capitalization": "AllUppercase", "letterSpacing": 2}}},
              "c": {"gap": {"small": 4}, "label": "a\"b\\c"}})");
    const QString style = write(QStringLiteral("styles/Button.qml"),
                                "import QtQuick 2.12\nItem {}");
    const ProgramRun result = run(words("show a.thm --class c --format qml"));
    QCOMPARE(result.exitCode, 0);

    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(result.output.toUtf8(), QUrl());
    const std::unique_ptr<QObject> object(component.create());
    QVERIFY2(object, qPrintable(component.errorString()));
    const LoadedFolder themes(folder());
    const EffectiveValues values = EffectiveValues::of(themes, themes.themes().constFirst(),
                                                       QStringLiteral("c"));
    QCOMPARE(object->property("radius").toInt(), 5);
    const auto *colors = object->property("colors").value<QObject *>();
    const auto *fonts = object->property("fonts").value<QObject *>();
    QVERIFY(colors && fonts);
    for (const char *name : { "foreground", "lighterForeground", "darkerForeground", "background",
                              "lighterBackground", "darkerBackground", "selection" })
        QCOMPARE(colors->property(name).value<QColor>(),
                 values.find(QStringLiteral("colors/") + QLatin1String(name))
                         ->value.value<QColor>());
    for (const char *name : { "mainFont", "alternateFont", "h1Font", "h2Font", "h3Font", "h4Font" })
        QCOMPARE(fonts->property(name).value<QFont>(),
                 themes.themes().constFirst()->fonts()->property(name).value<QFont>());
    const QVariantMap styles = object->property("styles").toMap();
    QCOMPARE(QUrl(styles.value(QStringLiteral("Button")).toString()).toLocalFile(), style);
    const QVariantMap classValues = object->property("classValues").toMap();
    QCOMPARE(classValues.value(QStringLiteral("gap/small")).toInt(), 4);
    QCOMPARE(classValues.value(QStringLiteral("label")).toString(), QStringLiteral("a\"b\\c"));
}

void tst_ShowCommand::hostileTextsStayInTheirPlaces()
{
    write(QStringLiteral("a.thm"),
          "{\"title\": \"x\\n}; evil: 1 //\\u2028*/\", \"global\": {\"fonts\": {\"main\": "
          "{\"family\": \"a\\n\\\"; } evil { x: \\u2029\"}}}, \"c\": {\"k\\nl*\": \"v\\n*/\"}}");
    const ProgramRun qml = run(words("show a.thm --class c --format qml"));
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData(qml.output.toUtf8(), QUrl());
    const std::unique_ptr<QObject> object(component.create());
    QVERIFY2(object, qPrintable(component.errorString() + qml.output));
    QVERIFY(!object->property("evil").isValid());

    const ProgramRun css = run(words("show a.thm --class c --format css"));
    // For people: nothing that could control their terminal, or begin a line.
    const ProgramRun text = run(words("show a.thm --class c"));
    QCOMPARE(text.output.count(QLatin1Char('\n')),
             run(words("show a.thm --class c --key fonts")).output.count(QLatin1Char('\n')) + 14);
    QVERIFY(text.output.contains(QChar(QChar::ReplacementCharacter)));
    const QStringList cssLines = css.output.split(QLatin1Char('\n'));
    for (const QString &line : cssLines)
        QVERIFY2(line.isEmpty() || line.startsWith(QLatin1String("/* "))
                         || line.startsWith(QLatin1String("    --")) || line == QLatin1String("}")
                         || line == QLatin1String(".c {"),
                 qPrintable(line));
}

void tst_ShowCommand::wrongUse_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    QTest::newRow("no theme") << words("show") << QStringLiteral("one theme has to be named\n");
    QTest::newRow("two themes") << words("show a b")
                                << QStringLiteral("one theme has to be named\n");
    QTest::newRow("unknown format")
            << words("show coast.thm --format yaml")
            << QStringLiteral("the format \"yaml\" is not text, json, css or qml\n");
    QTest::newRow("unknown color choice")
            << words("show coast.thm --color maybe")
            << QStringLiteral("the value of --color \"maybe\" is not auto, always or never\n");
    QTest::newRow("unknown option")
            << words("show coast.thm --colour") << QStringLiteral("unknown option 'colour'");
    QTest::newRow("unknown key")
            << words("show coast.thm --key colors/foregroud")
            << QStringLiteral("an item with these classes has no value \"colors/foregroud\"");
    QTest::newRow("class value that is not there")
            << words("show coast.thm --key class/gap")
            << QStringLiteral("an item with these classes has no value \"class/gap\"");
    QTest::newRow("neither file nor title")
            << words("show Cost")
            << QStringLiteral(
                       "there is no file \"Cost\", and no theme of that title in \".\"; there "
                       "are \"Coast\", \"Harbour\"; did you mean Coast?\n");
    QTest::newRow("a title like no other")
            << words("show Lighthouse")
            << QStringLiteral(
                       "there is no file \"Lighthouse\", and no theme of that title in \".\"; "
                       "there are \"Coast\", \"Harbour\"\n");
    QTest::newRow("a title in a folder of one theme")
            << words("show Coast --folder mist")
            << QStringLiteral("there is no file \"Coast\", and no theme of that title in "
                              "\"mist\"; there is \"Mist\"\n");
    QTest::newRow("a folder")
            << words("show mist")
            << QStringLiteral("\"mist\" is a folder; name a theme file in it, or a title and "
                              "--folder mist\n");
    QTest::newRow("a file of another name")
            << words("show styles/Button_header.qml")
            << QStringLiteral("styles/Button_header.qml:1:1: error:");
}

void tst_ShowCommand::wrongUse()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    writeCoast();
    write(QStringLiteral("mist/mist.thm"), "{ \"title\": \"Mist\" }\n");
    const ProgramRun result = run(arguments);
    QVERIFY2(result.errors.startsWith(QStringLiteral(TOOL_NAME " show: ") + message),
             qPrintable(result.errors));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.exitCode, 2);
}

/// A theme whose title is also a folder's name is the theme.
void tst_ShowCommand::titleOfAFolder()
{
    write(QStringLiteral("mist.thm"), "{ \"title\": \"mist\", \"global\": { \"radius\": 3 } }\n");
    QVERIFY(QDir(folder()).mkdir(QStringLiteral("mist")));
    const ProgramRun result = run(words("show mist --key radius"));
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.output,
             QStringLiteral("mist, mist.thm\n\n  radius  3  mist.thm:1:42, global\n"));
    QCOMPARE(result.exitCode, 0);
}

void tst_ShowCommand::missingClasses_data()
{
    QTest::addColumn<QString>("classes");
    QTest::addColumn<QStringList>("complaints");
    QTest::newRow("described") << QStringLiteral("header") << QStringList();
    QTest::newRow("in a style only") << QStringLiteral("primary") << QStringList();
    QTest::newRow("misspelt")
            << QStringLiteral("haeder")
            << QStringList{ QStringLiteral(
                       "the theme has no class \"haeder\"; did you mean header?") };
    QTest::newRow("misspelt name of a style's variant")
            << QStringLiteral("primry")
            << QStringList{ QStringLiteral(
                       "the theme has no class \"primry\"; did you mean primary?") };
    QTest::newRow("one of three, twice")
            << QStringLiteral("z header z")
            << QStringList{ QStringLiteral("the theme has no class \"z\"") };
    QTest::newRow("a key that is no class")
            << QStringLiteral("title global")
            << QStringList{ QStringLiteral("the theme has no class \"title\""),
                            QStringLiteral("the theme has no class \"global\"") };
}

void tst_ShowCommand::missingClasses()
{
    QFETCH(QString, classes);
    QFETCH(QStringList, complaints);
    writeCoast();
    write(QStringLiteral("styles/Card_primary.qml"), "import QtQuick 2.12\nItem {}\n");
    // The class is inherited there.
    for (const char *file : { "coast.thm", "harbour.thm" }) {
        const ProgramRun result = run({ QStringLiteral("show"), QLatin1String(file),
                                        QStringLiteral("--class"), classes });
        QString errors;
        for (const QString &complaint : qAsConst(complaints))
            errors += QStringLiteral(TOOL_NAME " show: ") + complaint + QLatin1Char('\n');
        QCOMPARE(result.errors, errors);
        QVERIFY(result.output.contains(QLatin1String("\ncolors\n")));
        QCOMPARE(result.exitCode, 0);
    }
}

void tst_ShowCommand::brokenTheme()
{
    write(QStringLiteral("a.thm"), "{\"title\": \"A\",}");
    const ProgramRun result = run(words("show a.thm --key radius"));
    // The application shows the default look, and so does this.
    QCOMPARE(result.output,
             QStringLiteral("(no title), a.thm\n\n  radius  0  default: no radius\n"));
    QVERIFY2(result.errors.startsWith(QLatin1String(TOOL_NAME " show: a.thm:1:")),
             qPrintable(result.errors));
    QCOMPARE(result.exitCode, 1);
}

void tst_ShowCommand::themeThatIsLeftOut()
{
    write(QStringLiteral("a.thm"), "{\"title\": \"A\", \"extends\": \"B\"}");
    const ProgramRun result = run(words("show a.thm"));
    QCOMPARE(result.output, QString());
    QVERIFY2(result.errors.startsWith(QLatin1String(TOOL_NAME " show: a.thm:1:27: error: ")),
             qPrintable(result.errors));
    QCOMPARE(result.exitCode, 2);
}

void tst_ShowCommand::diffShowsWhatIsNotTheSame()
{
    writeCoast();
    write(QStringLiteral("sea.thm"),
          "{ \"title\": \"Sea\", \"extends\": \"Coast\", \"header\": { \"gap\": 5, \"x\": 1 } }\n");
    const ProgramRun result = run(words("diff coast.thm Sea --class header"));
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(result.output,
             QStringLiteral(
                     "--- Coast, coast.thm, classes: header\n"
                     "+++ Sea, sea.thm, classes: header\n"
                     "\n"
                     "  -  colors/foreground  #405060  coast.thm:7:43, class header\n"
                     "  +  colors/foreground  #102030  coast.thm:4:35, global, inherited from "
                     "Coast\n"
                     "  -  class/gap          4        coast.thm:7:63, class header\n"
                     "  +  class/gap          5        sea.thm:1:58, class header\n"
                     "  -  class/x            none\n"
                     "  +  class/x            1        sea.thm:1:66, class header\n"));
}

void tst_ShowCommand::diffOfTheSame()
{
    writeCoast();
    const ProgramRun result = run(words("diff Coast Harbour"));
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.output, QString());
    QCOMPARE(result.exitCode, 0);
}

void tst_ShowCommand::diffOverFolders()
{
    // Each heir has to find the theme of its own folder, though both have the same title.
    for (const char *side : { "left", "right" }) {
        const QString name = QLatin1String(side);
        write(name + QStringLiteral("/base.thm"),
              QStringLiteral("{\"title\": \"Base\", \"global\": {\"radius\": %1}}")
                      .arg(name.size())
                      .toLatin1());
        write(name + QStringLiteral("/heir.thm"), "{\"title\": \"Heir\", \"extends\": \"Base\"}");
    }
    const ProgramRun result = run(words("diff left/heir.thm right/heir.thm"));
    QCOMPARE(result.output,
             QStringLiteral("--- Heir, left/heir.thm\n+++ Heir, right/heir.thm\n\n"
                            "  -  radius  4  left/base.thm:1:40, global, inherited from Base\n"
                            "  +  radius  5  right/base.thm:1:40, global, inherited from Base\n"));
    QCOMPARE(result.exitCode, 1);
}

void tst_ShowCommand::diffAsJson()
{
    writeCoast();
    write(QStringLiteral("sea.thm"),
          "{\"title\": \"Sea\", \"extends\": \"Coast\", "
          "\"header\": {\"gap\": 4, \"colors\": {\"foreground\": "
          "\"#000000\"}}}\n");
    const ProgramRun result = run(words("diff Coast Sea --class header --format json"));
    QCOMPARE(result.exitCode, 1);
    const QJsonObject object = objectIn(result);
    QCOMPARE(object.value(QLatin1String("left")).toObject().value(QLatin1String("title")),
             QJsonValue(QStringLiteral("Coast")));
    const QJsonArray differences = object.value(QLatin1String("differences")).toArray();
    QCOMPARE(differences.size(), 1);
    const QJsonObject difference = differences.first().toObject();
    QCOMPARE(difference.value(QLatin1String("key")).toString(),
             QStringLiteral("colors/foreground"));
    QCOMPARE(difference.value(QLatin1String("right")).toObject().value(QLatin1String("value")),
             QJsonValue(QStringLiteral("#000000")));
}

void tst_ShowCommand::diffWrongUse_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    QTest::newRow("one theme") << words("diff coast.thm")
                               << QStringLiteral("two themes have to be named\n");
    QTest::newRow("format of show only")
            << words("diff coast.thm harbour.thm --format css")
            << QStringLiteral("the format \"css\" is not text or json\n");
    QTest::newRow("unknown title")
            << words("diff coast.thm Port") << QStringLiteral("there is no file \"Port\"");
}

void tst_ShowCommand::diffWrongUse()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    writeCoast();
    const ProgramRun result = run(arguments);
    QVERIFY2(result.errors.startsWith(QStringLiteral(TOOL_NAME " diff: ") + message),
             qPrintable(result.errors));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.exitCode, 2);
}

TAVOLINS_TEST_MAIN(tst_ShowCommand)
#include "tst_showcommand.moc"
