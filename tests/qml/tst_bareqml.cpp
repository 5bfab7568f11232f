#include "qml/qmltestcase.h"
#include "support/themetext.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QLibraryInfo>
#include <QtQml/QQmlEngine>
#include <QtTest/QtTest>

/// The built module, with all that lies in its folder, where QML is all that is installed of Qt. In
/// a process of its own: what has been imported in one is found there ever after.
class tst_BareQml : public QmlTestCase
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();

    void themesNeedNothingElse();
};

void tst_BareQml::cleanup()
{
    park();
    TestCase::cleanup();
}

void tst_BareQml::themesNeedNothingElse()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    const QString qt = QLibraryInfo::path(QLibraryInfo::QmlImportsPath);
#else
    const QString qt = QLibraryInfo::location(QLibraryInfo::Qml2ImportsPath);
#endif
    const QString installed = folder() + QStringLiteral("/installed");
    QVERIFY(QDir().mkpath(installed));
    QVERIFY(QFile::link(qt + QStringLiteral("/QtQml"), installed + QStringLiteral("/QtQml")));
    makeCurrent(QStringLiteral("a.thm"), themeText(QStringLiteral("A"), 7));
    QQmlEngine engine;
    engine.setImportPathList({ installed, QStringLiteral(TAVOLINS_QML_IMPORT_PATH) });
    for (const char *module : { "QtQuick 2.15", "QtQuick.Controls 2.15" }) {
        const QString errors = errorsOf(&engine, QByteArray("import ") + module + "\nItem { }");
        QVERIFY2(errors.contains(QLatin1String("is not installed")), qPrintable(errors));
    }
    const auto object = create(&engine,
                               "import QtQml 2.15\nimport " TAVOLINS_QML_URI " 1.0\n"
                               "QtObject { property int radius: Theme.radius }");
    QVERIFY(object);
    QCOMPARE(object->property("radius").toInt(), 7);
}

TAVOLINS_TEST_MAIN(tst_BareQml)
#include "tst_bareqml.moc"
