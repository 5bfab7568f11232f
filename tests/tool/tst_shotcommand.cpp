// The subcommand shot, as it is run.

#include "support/programrun.h"
#include "support/testcase.h"

#include <QtCore/QDir>
#include <QtGui/QImage>
#include <QtTest/QtTest>

class tst_ShotCommand : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void writesAPictureOfEachTheme();
    void picturesAreThoseOfTheGallery();
    void size();
    void oneThemeOnly();
    void brokenThemesDoNotKeepOthersFromTheirPictures();
    void pictureThatCannotBeWritten();
    void showsProgressOnATerminal();
    void wrongUse_data();
    void wrongUse();

private:
    ProgramRun run(const QStringList &arguments);
    void writeThemes();
};

ProgramRun tst_ShotCommand::run(const QStringList &arguments)
{
    return runProgram(QStringLiteral(TOOL_PROGRAM), arguments, folder());
}

void tst_ShotCommand::writeThemes()
{
    for (const char *color : { "red", "green" }) {
        const QByteArray name(color);
        write(QStringLiteral("themes/%1.thm").arg(QLatin1String(color)),
              "{\"title\": \"" + name.toUpper() + "\", \"global\": {\"colors\": {\"background\": \""
                      + name + "\"}}}");
    }
}

void tst_ShotCommand::writesAPictureOfEachTheme()
{
    writeThemes();
    const ProgramRun result = run(words("shot themes -o not/there/yet"));
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.output, QStringLiteral("not/there/yet/green.png\nnot/there/yet/red.png\n"));
    QCOMPARE(result.exitCode, 0);
    for (const char *color : { "red", "green" }) {
        const QImage picture(folder()
                             + QStringLiteral("/not/there/yet/%1.png").arg(QLatin1String(color)));
        QCOMPARE(picture.size(), QSize(1280, 740));
        // The page, beside the list of themes.
        QCOMPARE(picture.pixelColor(1270, 10), QColor(QLatin1String(color)));
    }
}

void tst_ShotCommand::picturesAreThoseOfTheGallery()
{
    writeThemes();
    QCOMPARE(run(words("shot themes -o here")).exitCode, 0);
    QCOMPARE(runProgram(QStringLiteral(GALLERY_PROGRAM), words("themes --shot there"), folder())
                     .exitCode,
             0);
    const QImage picture(folder() + QStringLiteral("/here/red.png"));
    QVERIFY(!picture.isNull());
    QCOMPARE(QImage(folder() + QStringLiteral("/there/red.png")), picture);
}

void tst_ShotCommand::size()
{
    writeThemes();
    QCOMPARE(run(words("shot themes -o shots --size 1000x1100")).exitCode, 0);
    QCOMPARE(QImage(folder() + QStringLiteral("/shots/red.png")).size(), QSize(1000, 1100));
}

void tst_ShotCommand::oneThemeOnly()
{
    writeThemes();
    write(QStringLiteral("themes/broken.thm"), "{");
    write(QStringLiteral("themes/late.thm"), "{\"title\": \"LATE\", \"extends\": \"N\"}");
    const ProgramRun result = run(words("shot themes -o shots --theme RED"));
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.output, QStringLiteral("shots/red.png\n"));
    QCOMPARE(result.exitCode, 0);

    const ProgramRun brokenOne = run({ QStringLiteral("shot"), QStringLiteral("themes"),
                                       QStringLiteral("-o"), QStringLiteral("shots"),
                                       QStringLiteral("--theme=LATE") });
    QVERIFY2(brokenOne.errors.startsWith(
                     QLatin1String(TOOL_NAME " shot: themes/late.thm:1:30: error: ")),
             qPrintable(brokenOne.errors));
    QCOMPARE(brokenOne.exitCode, 1);
}

void tst_ShotCommand::brokenThemesDoNotKeepOthersFromTheirPictures()
{
    writeThemes();
    write(QStringLiteral("themes/comma.thm"), "{\"title\": \"C\",}");
    write(QStringLiteral("themes/empty.thm"), "");
    write(QStringLiteral("themes/orphan.thm"), "{\"title\": \"O\", \"extends\": \"N\"}");
    const ProgramRun result = run(words("shot themes -o shots"));
    QCOMPARE(result.output, QStringLiteral("shots/green.png\nshots/red.png\n"));
    const QStringList lines = result.errors.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines.at(0).startsWith(
            QLatin1String(TOOL_NAME " shot: themes/comma.thm:1:14: error: ")));
    QVERIFY(lines.at(1).startsWith(
            QLatin1String(TOOL_NAME " shot: themes/empty.thm:1:1: error: ")));
    QVERIFY(lines.at(2).startsWith(
            QLatin1String(TOOL_NAME " shot: themes/orphan.thm:1:27: error: ")));
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(QDir(folder() + QStringLiteral("/shots")).entryList(QDir::Files).size(), 2);
}

void tst_ShotCommand::pictureThatCannotBeWritten()
{
    writeThemes();
    QVERIFY(QDir(folder()).mkpath(QStringLiteral("shots/red.png")));
    const ProgramRun result = run(words("shot themes -o shots"));
    QCOMPARE(result.errors, QStringLiteral(TOOL_NAME " shot: can't write \"shots/red.png\"\n"));
    QCOMPARE(result.output, QStringLiteral("shots/green.png\n"));
    QCOMPARE(result.exitCode, 1);
}

void tst_ShotCommand::showsProgressOnATerminal()
{
    QString why;
    if (!hasTerminals(&why))
        QSKIP(qPrintable(why));
    writeThemes();
    // Runs what it is given on a terminal of its own.
    const ProgramRun result = runProgram(QStringLiteral("script"),
                                         { QStringLiteral("-qec"),
                                           QStringLiteral(TOOL_PROGRAM " shot themes -o shots"),
                                           QStringLiteral("/dev/null") },
                                         folder());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.output,
             QStringLiteral("\r\033[K[1/2] green.thm\r\033[Kshots/green.png\r\n"
                            "\r\033[K[2/2] red.thm\r\033[Kshots/red.png\r\n"));
}

void tst_ShotCommand::wrongUse_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    QTest::newRow("no folder") << words("shot -o shots")
                               << QStringLiteral("one folder has to be named\n");
    QTest::newRow("no output") << words("shot themes")
                               << QStringLiteral("-o DIR has to be given\n");
    for (const char *size :
         { "1280", "1280x", "x740", "899x740", "1280x639", "16385x740", "1280x740x2", "-1280x740" })
        QTest::newRow(size) << QStringList{
            QStringLiteral("shot"), QStringLiteral("themes"), QStringLiteral("-o"),
            QStringLiteral("shots"), QStringLiteral("--size=") + QLatin1String(size)
        } << QStringLiteral("--size takes WIDTHxHEIGHT, from 900x640 to 16384x16384\n");
    QTest::newRow("folder that is not there")
            << words("shot nowhere -o shots") << QStringLiteral("there is no folder \"nowhere\"");
    QTest::newRow("title that no theme has")
            << words("shot themes -o shots --theme BLUE")
            << QStringLiteral("no theme in \"themes\" is titled \"BLUE\"\n");
    QTest::newRow("folder without themes")
            << words("shot . -o shots")
            << QStringLiteral("no theme in \".\"; themes are files named *.thm");
}

void tst_ShotCommand::wrongUse()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    writeThemes();
    const ProgramRun result = run(arguments);
    QVERIFY2(result.errors.startsWith(QStringLiteral(TOOL_NAME " shot: ") + message),
             qPrintable(result.errors));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.exitCode, 2);
    QVERIFY(!QDir(folder()).exists(QStringLiteral("shots")));
}

TAVOLINS_TEST_MAIN(tst_ShotCommand)
#include "tst_shotcommand.moc"
