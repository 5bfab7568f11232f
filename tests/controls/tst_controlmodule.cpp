#include "controls/controlstestcase.h"
#include "controls/samples.h"
#include "theme/theme.h"

#include <QtQml/QQmlComponent>
#include <QtTest/QtTest>

/// For Qt 6 the style is the module Tavolins, which is that of the themes as well where the build
/// does not call theirs otherwise: whose controls a file gets by which imports.
class tst_ControlModule : public ControlsTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void styleHasAllControls_data();
    void styleHasAllControls();
    void themesBringNoControls_data();
    void themesBringNoControls();
    void importWithoutAVersion_data();
    void importWithoutAVersion();

private:
    QByteArray typeOf(const QByteArray &imports, const QString &control);
    QByteArray typeInTheStyle(const QString &control);
};

namespace {

const QByteArray basicControls = "import QtQuick.Controls.Basic\n";
const QByteArray themes = "import " TAVOLINS_QML_URI " 1.0\n";

} // namespace

void tst_ControlModule::init()
{
    ControlsTestCase::init();
    makeCurrent(QStringLiteral("theme.thm"), themeAround(QStringLiteral("Theme"), 6));
}

/// What a \a control is in a file with \a imports, in which the theme can be read. Types that are
/// made of files are numbered, with a number of its own for each file.
QByteArray tst_ControlModule::typeOf(const QByteArray &imports, const QString &control)
{
    QQmlComponent component(engine());
    component.setData("import QtQml\n" + imports + "QtObject { property int radius: Theme.radius\n"
                              + "property QtObject made: " + control.toLatin1() + " { } }",
                      QUrl());
    const std::unique_ptr<QObject> object(component.create());
    if (!object) {
        qWarning("%s", qPrintable(component.errorString()));
        return QByteArray();
    }
    if (object->property("radius").toInt() != 6)
        qWarning("the theme is not read");
    return object->property("made").value<QObject *>()->metaObject()->className();
}

QByteArray tst_ControlModule::typeInTheStyle(const QString &control)
{
    QQmlComponent component(engine(), styleFile(control + QStringLiteral(".qml")));
    const std::unique_ptr<QObject> object(component.create());
    return object ? QByteArray(object->metaObject()->className()) : QByteArray();
}

void tst_ControlModule::styleHasAllControls_data()
{
    addControlRows();
}

void tst_ControlModule::styleHasAllControls()
{
    QFETCH(QString, control);
    const QByteArray ours = typeInTheStyle(control);
    QVERIFY(!ours.isEmpty());
    for (const char *version : { "", "2.15", "6.4" }) {
        const QByteArray controls = QByteArray("import QtQuick.Controls ") + version + '\n';
        QCOMPARE(typeOf(controls + themes, control), ours);
        QCOMPARE(typeOf(themes + controls, control), ours);
    }
}

void tst_ControlModule::themesBringNoControls_data()
{
    addControlRows();
}

/// An application with controls of another style has the themes beside them.
void tst_ControlModule::themesBringNoControls()
{
    QFETCH(QString, control);
    const QByteArray basic = typeOf(basicControls + themes, control);
    QVERIFY(!basic.isEmpty());
    QVERIFY(basic != typeInTheStyle(control));
    QCOMPARE(typeOf(themes + basicControls, control), basic);
}

void tst_ControlModule::importWithoutAVersion_data()
{
    QTest::addColumn<QByteArray>("imports");
    QTest::addColumn<bool>("isOurs");
    const QByteArray withoutVersion = "import " TAVOLINS_QML_URI "\n";
    // A module of the themes that is called otherwise has no controls in any version.
    const bool isOurs = QByteArray(TAVOLINS_QML_URI) == "Tavolins";
    QTest::newRow("after another style's") << basicControls + withoutVersion << isOurs;
    QTest::newRow("before another style's") << withoutVersion + basicControls << false;
}

/// It brings the controls as well, and of two modules with a name the later import has it.
void tst_ControlModule::importWithoutAVersion()
{
    QFETCH(QByteArray, imports);
    QFETCH(bool, isOurs);
    const QString button = QStringLiteral("Button");
    QCOMPARE(typeOf(imports, button) == typeInTheStyle(button), isOurs);
}

TAVOLINS_TEST_MAIN(tst_ControlModule)
#include "tst_controlmodule.moc"
