// The subcommands new and schema, as they are run.

#include "checker/startertheme.h"
#include "checker/themereference.h"
#include "checker/themeschema.h"
#include "support/programrun.h"
#include "support/testcase.h"

#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtTest/QtTest>

class tst_NewCommand : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void writesATheme_data();
    void writesATheme();
    void neverOverwrites();
    void wrongUse_data();
    void wrongUse();
    void printsTheSchema();
    void printsTheReference();
    void schemaWrongUse();

private:
    ProgramRun run(const QStringList &arguments);
    QByteArray content(const QString &name);
};

ProgramRun tst_NewCommand::run(const QStringList &arguments)
{
    return runProgram(QStringLiteral(TOOL_PROGRAM), arguments, folder());
}

/// What is in the file \a name; null if there is none.
QByteArray tst_NewCommand::content(const QString &name)
{
    QFile file(folder() + QLatin1Char('/') + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void tst_NewCommand::writesATheme_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QColor>("background");
    QTest::addColumn<QColor>("accent");
    const QColor paper(0xf6, 0xf5, 0xf2);
    const QColor teal(0x1f, 0x6f, 0x8b);
    QTest::newRow("name alone") << QStringList{ QStringLiteral("Harbour") }
                                << QStringLiteral("harbour.thm") << QStringLiteral("Harbour")
                                << paper << teal;
    QTest::newRow("name of several words") << QStringList{ QStringLiteral("  Old  Harbour, 2!") }
                                           << QStringLiteral("old-harbour-2.thm")
                                           << QStringLiteral("  Old  Harbour, 2!") << paper << teal;
    QTest::newRow("letters beyond ASCII")
            << QStringList{ QStringLiteral("Grün") } << QStringLiteral("grün.thm")
            << QStringLiteral("Grün") << paper << teal;
    QTest::newRow("colors") << QStringList{ QStringLiteral("Night"),
                                            QStringLiteral("--background=#101418"),
                                            QStringLiteral("--accent"), QStringLiteral("gold") }
                            << QStringLiteral("night.thm") << QStringLiteral("Night")
                            << QColor(0x10, 0x14, 0x18) << QColor(0xff, 0xd7, 0);
    QTest::newRow("output") << QStringList{ QStringLiteral("Harbour"), QStringLiteral("-o"),
                                            QStringLiteral("port.thm") }
                            << QStringLiteral("port.thm") << QStringLiteral("Harbour") << paper
                            << teal;
}

void tst_NewCommand::writesATheme()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, path);
    QFETCH(QString, title);
    QFETCH(QColor, background);
    QFETCH(QColor, accent);
    const ProgramRun result = run(QStringList(QStringLiteral("new")) + arguments);
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.output, path + QLatin1Char('\n'));
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(content(path), starterTheme(title, background, accent));
}

void tst_NewCommand::neverOverwrites()
{
    write(QStringLiteral("harbour.thm"), "mine");
    const ProgramRun result = run({ QStringLiteral("new"), QStringLiteral("Harbour") });
    QCOMPARE(result.errors,
             QStringLiteral(TOOL_NAME " new: harbour.thm exists; nothing was written\n"));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.exitCode, 2);
    QCOMPARE(content(QStringLiteral("harbour.thm")), QByteArray("mine"));

    // Nor what a link points at, or would.
    QVERIFY(QFile::link(QStringLiteral("nowhere.txt"), folder() + QStringLiteral("/link.thm")));
    QCOMPARE(run({ QStringLiteral("new"), QStringLiteral("Link") }).exitCode, 2);
    QVERIFY(!QFile::exists(folder() + QStringLiteral("/nowhere.txt")));
}

void tst_NewCommand::wrongUse_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    QTest::newRow("no name") << QStringList() << QStringLiteral("one name has to be given\n");
    QTest::newRow("empty name") << QStringList{ QString() }
                                << QStringLiteral("one name has to be given\n");
    QTest::newRow("name that makes no file name")
            << QStringList{ QStringLiteral("???") }
            << QStringLiteral("the name makes no file name; --output FILE gives one\n");
    QTest::newRow("no color") << QStringList{
        QStringLiteral("A"), QStringLiteral("--accent=reddish")
    } << QStringLiteral("--accent takes an opaque color, as in \"#1f6f8b\"\n");
    QTest::newRow("color with alpha")
            << QStringList{ QStringLiteral("A"), QStringLiteral("--background=#80ffffff") }
            << QStringLiteral("--background takes an opaque color, as in \"#1f6f8b\"\n");
    QTest::newRow("folder that is not there")
            << QStringList{ QStringLiteral("A"), QStringLiteral("--output=nowhere/a.thm") }
            << QStringLiteral("nowhere/a.thm can't be written: ");
}

void tst_NewCommand::wrongUse()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    const ProgramRun result = run(QStringList(QStringLiteral("new")) + arguments);
    QVERIFY2(result.errors.startsWith(QStringLiteral(TOOL_NAME " new: ") + message),
             qPrintable(result.errors));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.exitCode, 2);
    QVERIFY(QDir(folder()).isEmpty());
}

void tst_NewCommand::printsTheSchema()
{
    const ProgramRun result = run({ QStringLiteral("schema") });
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(QJsonDocument::fromJson(result.output.toUtf8()).object(), themeSchema());
}

void tst_NewCommand::printsTheReference()
{
    const ProgramRun result = run(
            { QStringLiteral("schema"), QStringLiteral("--format=markdown") });
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.output, themeReference());
}

void tst_NewCommand::schemaWrongUse()
{
    const ProgramRun format = run({ QStringLiteral("schema"), QStringLiteral("--format=xml") });
    QVERIFY(format.errors.startsWith(
            QLatin1String(TOOL_NAME " schema: the format \"xml\" is not json or markdown\n")));
    QCOMPARE(format.exitCode, 2);
    QCOMPARE(run({ QStringLiteral("schema"), QStringLiteral("a.thm") }).exitCode, 2);
}

TAVOLINS_TEST_MAIN(tst_NewCommand)
#include "tst_newcommand.moc"
