#include "support/testcase.h"

#include <QtCore/QProcess>
#include <QtTest/QtTest>

/// Applications that end while themes are in use: no message, no leak, exit code 0. What the
/// sanitizers report goes to the error output, so it fails the test as well.
class tst_Exit : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void ends_data();
    void ends();
};

void tst_Exit::ends_data()
{
    QTest::addColumn<QString>("when");
    QTest::addColumn<QString>("order");
    const char *const times[] = { "idle",    "switch", "half written",
                                  "written", "reload", "no event loop" };
    const char *const orders[] = { "view,engine,app", "engine,view,app", "view,app,engine",
                                   "engine,app,view", "app,view,engine", "app,engine,view" };
    for (const char *when : times) {
        for (const char *order : orders) {
            QTest::addRow("%s; %s", when, order)
                    << QString::fromLatin1(when) << QString::fromLatin1(order);
        }
    }
    QTest::newRow("exit in a handler")
            << QStringLiteral("exit in a handler") << QStringLiteral("view,engine,app");
}

void tst_Exit::ends()
{
    QFETCH(QString, when);
    QFETCH(QString, order);
    const QByteArray classes = ", \"warning\": { \"colors\": { \"foreground\": \"#ff0000\" } } }";
    write(QStringLiteral("day.thm"),
          "{ \"title\": \"Day\", \"global\": { \"colors\": { \"background\": \"#102030\" } }"
                  + classes);
    write(QStringLiteral("night.thm"),
          "{ \"title\": \"Night\", \"extends\": \"Later\", \"global\": { \"radius\": 3 } }");
    write(QStringLiteral("z.thm"),
          "{ \"title\": \"Later\", \"global\": { \"radius\": 4 }" + classes);

    QProcess process;
    if (when == QLatin1String("exit in a handler")) {
        // Nothing deletes the engine then, and the leak check does not look for pointers in the
        // memory of its JavaScript.
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
        process.setProcessEnvironment(environment);
    }
    process.start(QStringLiteral(TAVOLINS_EXITAPP), { folder(), when, order });
    QVERIFY(process.waitForFinished(60000));
    QCOMPARE(process.readAllStandardError(), QByteArray());
    QCOMPARE(process.readAllStandardOutput(), QByteArray());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
}

TAVOLINS_TEST_MAIN(tst_Exit)
#include "tst_exit.moc"
