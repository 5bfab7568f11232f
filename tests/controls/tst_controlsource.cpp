#include "support/testcase.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtGui/QColor>
#include <QtTest/QtTest>

/// What the files of the style are written with. That they work is shown by the other tests.
class tst_ControlSource : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void faultsAreFound_data();
    void faultsAreFound();
    void filesKeepTheRules_data();
    void filesKeepTheRules();
    void allFilesAreLaidOut();
};

namespace {

QString source(const QString &file)
{
    return QStringLiteral(TAVOLINS_SOURCE_DIR "/controls/") + file;
}

QStringList qmlFiles()
{
    const QString root = source(QString());
    QStringList files;
    QDirIterator it(root, { QStringLiteral("*.qml") }, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        files.append(it.next().mid(root.size()));
    files.sort();
    return files;
}

QString withoutComments(QString code)
{
    static const QRegularExpression comment(QStringLiteral("//[^\n]*|/\\*.*?\\*/"),
                                            QRegularExpression::DotMatchesEverythingOption);
    return code.remove(comment);
}

QStringList matches(const QString &code, const QRegularExpression &expression)
{
    QStringList found;
    QRegularExpressionMatchIterator it = expression.globalMatch(code);
    while (it.hasNext())
        found.append(it.next().captured(1));
    return found;
}

/// What \a file may have that others may not, as there is no other way: what an update brings is
/// taken over once it is complete, tables have to be told of it, and an object for each set of
/// class names can't be written down beforehand.
QStringList exceptions(const QString &file)
{
    if (file == QLatin1String("impl/Look.qml"))
        return { QStringLiteral("function ofClass"), QStringLiteral("Component.onCompleted"),
                 QStringLiteral("Theme.onNeedUpdate") };
    if (file.endsWith(QLatin1String("HeaderView.qml")))
        return { QStringLiteral("Theme.onNeedUpdate") };
    return QStringList();
}

/// Where the text \a code of \a file breaks the rules.
QStringList faults(const QString &file, const QString &text)
{
    const QString code = withoutComments(text);
    QStringList found;
    const QStringList allowed = exceptions(file);

    const QStringList strings = matches(
            code, QRegularExpression(QStringLiteral("[\"']([^\"'\n]*)[\"']")));
    for (const QString &string : strings) {
        if (QColor::isValidColor(string) && string != QLatin1String("transparent"))
            found.append(QStringLiteral("the color ") + string);
    }
    const auto refuse = [&](const char *what, const char *expression) {
        const QStringList all = matches(
                code,
                QRegularExpression(QLatin1String(expression), QRegularExpression::MultilineOption));
        for (const QString &match : all) {
            if (!allowed.contains(match))
                found.append(QLatin1String(what) + match);
        }
    };
    refuse("a color of its own: ", "(\\bQt\\.(?:rgba|hsla|hsva|color)\\b|\\bSystemPalette\\b)");
    refuse("a font of its own: ",
           "^\\s*(?:font\\s*\\{\\s*|font\\.)?((?:pixelSize|pointSize|family)\\s*:.*)");
    refuse("a font of its own: ", "(\\bQt\\.font\\b|FontLoader|FontMetrics)");
    refuse("a radius of its own: ",
           "\\bradius\\s*:\\s*((?!.*(?:\\bLook\\.radius|\\w+\\.radius|(?:width|height) / "
           "[24])).+)$");
    refuse("a function: ", "\\b(function(?: \\w+)?)\\b");
    refuse("a function: ", "(=>)");
    refuse("a handler: ", "^\\s*((?:\\w+\\.)*on[A-Z]\\w*)\\s*:");
    refuse("connections: ", "\\b(Connections)\\s*\\{");
    refuse("anchors: ", "\\b(anchors\\b.*)");
    refuse("a state that bindings serve: ", "^\\s*(states\\s*:)");
    refuse("an import of another's: ",
           "^import (?!QtQuick 2|QtQuick\\.Window 2|QtQuick\\.Templates 2|QtQuick\\.Controls 2|"
           "QtQuick\\.Controls\\.impl 2|Tavolins 1|\"impl\")(.*)");
    return found;
}

} // namespace

void tst_ControlSource::faultsAreFound_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("isFault");
    const auto row = [](const char *name, const char *line, bool isFault = true) {
        QTest::newRow(name) << QString::fromLatin1(line) << isFault;
    };
    row("a color of three digits", "color: \"#fff\"");
    row("a color of eight digits", "color: checked ? '#80ffffff' : ground.rest");
    row("a color's name", "border.color: \"steelblue\"");
    row("a color made of numbers", "color: Qt.rgba(0, 0, 0, 0.5)");
    row("a size in pixels", "    font.pixelSize: 14");
    row("a size in a group", "    font { pixelSize: 14 }");
    row("a family", "    font.family: \"Sans\"");
    row("a radius", "    radius: 4");
    row("a radius of two numbers", "    radius: flat ? 4 : 2");
    row("a function", "    function f() { return 1 }");
    row("an arrow function", "    property var f: x => x");
    row("a handler", "    onClicked: toggle()");
    row("an attached handler", "    Component.onCompleted: toggle()");
    row("connections", "    Connections { target: control }");
    row("anchors", "    anchors.fill: parent");
    row("a group of anchors", "    anchors { fill: parent }");
    row("another style", "import QtQuick.Controls.Material 2.15");
    row("no color", "color: \"transparent\"", false);
    row("a color of the theme", "color: Look.raised.rest", false);
    row("a radius of the theme", "radius: Math.min(Look.radius, height / 2)", false);
    row("a half circle", "radius: width / 2", false);
    row("a color in a comment", "// as \"#fff\" and onClicked: would be", false);
    row("a weight", "font.bold: true", false);
    row("a size of the font", "width: control.font.pixelSize", false);
}

void tst_ControlSource::faultsAreFound()
{
    QFETCH(QString, line);
    QFETCH(bool, isFault);
    QCOMPARE(!faults(QStringLiteral("Button.qml"), line).isEmpty(), isFault);
}

void tst_ControlSource::filesKeepTheRules_data()
{
    QTest::addColumn<QString>("file");
    const QStringList files = qmlFiles();
    QVERIFY(files.size() > 60);
    for (const QString &file : files)
        QTest::newRow(qPrintable(file)) << file;
}

void tst_ControlSource::filesKeepTheRules()
{
    QFETCH(QString, file);
    QFile qml(source(file));
    QVERIFY(qml.open(QIODevice::ReadOnly));
    QCOMPARE(faults(file, QString::fromUtf8(qml.readAll())), QStringList());
}

/// Everything in the sources is in the build as well, under the same name.
void tst_ControlSource::allFilesAreLaidOut()
{
    QStringList files = qmlFiles();
    files.append(QStringLiteral("impl/qmldir"));
    const QStringList images = QDir(source(QStringLiteral("impl/images"))).entryList(QDir::Files);
    QVERIFY(!images.isEmpty());
    for (const QString &image : images)
        files.append(QStringLiteral("impl/images/") + image);
    for (const QString &file : qAsConst(files)) {
        const QFileInfo built(QStringLiteral(TAVOLINS_QML_IMPORT_PATH "/" TAVOLINS_CONTROLS_DIR "/")
                              + file);
        QVERIFY2(built.isFile(), qPrintable(file));
    }
}

TAVOLINS_TEST_MAIN(tst_ControlSource)
#include "tst_controlsource.moc"
