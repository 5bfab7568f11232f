// The gallery as a command: arguments, messages, exit codes and pictures.

#include "support/programrun.h"
#include "support/testcase.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtGui/QImage>
#include <QtTest/QtTest>

#include <algorithm>

class tst_GalleryCommand : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void tellsWhatItCanDo();
    void tellsItsVersion();
    void wrongUse_data();
    void wrongUse();
    void folderWithoutThemes_data();
    void folderWithoutThemes();
    void themesLeftOutAreTold();
    void themeWhoseParentLoadedTooLate();
    void brokenThemeHasNoPicture_data();
    void brokenThemeHasNoPicture();
    void windowNeedsADisplay();
    void writesAPictureOfEachTheme();
    void picturesAreAlwaysTheSame();
    void pictureThatCannotBeWritten();
    void runsFromAnInstallation();

private:
    typedef ProgramRun Result;
    Result run(const QStringList &arguments,
               const QString &program = QStringLiteral(GALLERY_PROGRAM));
};

namespace {

const int timeoutMilliseconds = 60000;

/// The pictures in \a folder of the themes in the files \a names.
QStringList pictures(const QString &folder, const QStringList &names)
{
    QStringList paths;
    for (const QString &name : names) {
        paths.append(QStringLiteral("%1/%2.png").arg(folder, name));
        if (GALLERY_HAS_CONTROLS)
            paths.append(QStringLiteral("%1/%2-controls.png").arg(folder, name));
    }
    return paths;
}

/// Whether \a errors has one line for each of \a beginnings, which begins like that. How it goes on
/// is the checker's, whose own tests know its words.
bool isComplaint(const QString &errors, const QVector<const char *> &beginnings)
{
    const QStringList lines = errors.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    return std::equal(lines.begin(), lines.end(), beginnings.begin(), beginnings.end(),
                      [](const QString &line, const char *beginning) {
                          return line.startsWith(QLatin1String(GALLERY_NAME ": ")
                                                 + QLatin1String(beginning));
                      });
}

QStringList bundledPictures(const QString &folder)
{
    return pictures(folder,
                    { QStringLiteral("daylight"), QStringLiteral("dusk"), QStringLiteral("moss"),
                      QStringLiteral("plum"), QStringLiteral("signal") });
}

/// What the gallery prints of the pictures in "shots" of the themes in the files \a names.
QString printed(const QStringList &names)
{
    return pictures(QStringLiteral("shots"), names).join(QLatin1Char('\n')) + QLatin1Char('\n');
}

} // namespace

tst_GalleryCommand::Result tst_GalleryCommand::run(const QStringList &arguments,
                                                   const QString &program)
{
    return runProgram(program, arguments, folder());
}

void tst_GalleryCommand::tellsWhatItCanDo()
{
    const Result result = run({ QStringLiteral("--help") });
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.errors, QString());
    for (const char *word : { "--help", "--version", "--shot", "--theme", "folder", "Exit codes" })
        QVERIFY2(result.output.contains(QLatin1String(word)), word);
}

void tst_GalleryCommand::tellsItsVersion()
{
    const Result result = run({ QStringLiteral("--version") });
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.output, QStringLiteral(GALLERY_NAME " 1.0.0\n"));
}

void tst_GalleryCommand::wrongUse_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    QTest::newRow("unknown option")
            << QStringList{ QStringLiteral("--shoot") } << QStringLiteral("unknown option 'shoot'");
    QTest::newRow("option without its value") << QStringList{ QStringLiteral("--shot") }
                                              << QStringLiteral("missing value after '--shot'");
    QTest::newRow("empty value") << QStringList{ QStringLiteral("--shot=") }
                                 << QStringLiteral("the folder of --shot is empty");
    QTest::newRow("two folders") << QStringList{ QStringLiteral("a"), QStringLiteral("b") }
                                 << QStringLiteral("only one folder can be shown");
}

void tst_GalleryCommand::wrongUse()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    const Result result = run(arguments);
    QCOMPARE(result.errors, QStringLiteral(GALLERY_NAME ": %1\n").arg(message));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.exitCode, 1);
}

void tst_GalleryCommand::folderWithoutThemes_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("message");
    QTest::newRow("missing folder") << QStringList{ QStringLiteral("nowhere") }
                                    << QStringLiteral("there is no folder \"nowhere\"");
    QTest::newRow("missing folder, pictures")
            << QStringList{ QStringLiteral("nowhere"), QStringLiteral("--shot=shots") }
            << QStringLiteral("there is no folder \"nowhere\"");
    QTest::newRow("folder without themes")
            << QStringList{ QStringLiteral("empty") }
            << QStringLiteral("no theme in \"empty\"; themes are files named *.thm");
    QTest::newRow("a file for a folder") << QStringList{ QStringLiteral("full/a.thm") }
                                         << QStringLiteral("there is no folder \"full/a.thm\"");
    QTest::newRow("unknown title")
            << QStringList{ QStringLiteral("full"), QStringLiteral("--theme=B") }
            << QStringLiteral("no theme in \"full\" is titled \"B\"");
}

void tst_GalleryCommand::folderWithoutThemes()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, message);
    write(QStringLiteral("empty/readme.txt"), "");
    write(QStringLiteral("full/a.thm"), R"({ "title": "A" })");
    const Result result = run(arguments);
    QCOMPARE(result.errors, QStringLiteral(GALLERY_NAME ": %1\n").arg(message));
    QCOMPARE(result.output, QString());
    QCOMPARE(result.exitCode, 2);
    QVERIFY(!QDir(folder()).exists(QStringLiteral("shots")));
}

void tst_GalleryCommand::themesLeftOutAreTold()
{
    write(QStringLiteral("mixed/a.thm"), R"({ "title": "A" })");
    write(QStringLiteral("mixed/empty.thm"), "");
    write(QStringLiteral("mixed/orphan.thm"), R"({ "extends": "Nobody" })");
    const Result result = run({ QStringLiteral("mixed"), QStringLiteral("--shot=shots") });
    QVERIFY2(isComplaint(result.errors,
                         { "mixed/empty.thm:1:1: error: ", "mixed/orphan.thm:1:14: error: " }),
             qPrintable(result.errors));
    QCOMPARE(result.output, printed({ QStringLiteral("a") }));
    QCOMPARE(result.exitCode, 1);
}

void tst_GalleryCommand::themeWhoseParentLoadedTooLate()
{
    write(QStringLiteral("chain/a.thm"), R"({ "title": "A", "extends": "B" })");
    write(QStringLiteral("chain/b.thm"), R"({ "title": "B", "extends": "C" })");
    write(QStringLiteral("chain/c.thm"), R"({ "title": "C" })");
    const QStringList arguments = { QStringLiteral("chain"), QStringLiteral("--shot=shots") };
    const Result result = run(arguments);
    QVERIFY2(isComplaint(result.errors, { "chain/a.thm:1:28: error: " }),
             qPrintable(result.errors));
    QVERIFY2(
            result.errors.contains(QLatin1String("rename this file so that it comes behind b.thm")),
            qPrintable(result.errors));
    QCOMPARE(result.output, printed({ QStringLiteral("c"), QStringLiteral("b") }));
    QCOMPARE(result.exitCode, 1);

    // What it advises.
    QVERIFY(QFile::rename(folder() + QStringLiteral("/chain/a.thm"),
                          folder() + QStringLiteral("/chain/b2.thm")));
    const Result renamed = run(arguments);
    QCOMPARE(renamed.errors, QString());
    QCOMPARE(renamed.exitCode, 0);
}

void tst_GalleryCommand::brokenThemeHasNoPicture_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("place");
    QTest::newRow("half written") << QByteArray("{\n  \"title\": \"Brok")
                                  << QByteArray("mixed/broken.thm:2:");
    QTest::newRow("array at the root") << QByteArray("[]") << QByteArray("mixed/broken.thm:1:1: ");
}

void tst_GalleryCommand::brokenThemeHasNoPicture()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, place);
    write(QStringLiteral("mixed/a.thm"), R"({ "title": "A" })");
    write(QStringLiteral("mixed/broken.thm"), text);
    write(QStringLiteral("mixed/z.thm"), R"({ "title": "Z" })");
    const Result result = run({ QStringLiteral("mixed"), QStringLiteral("--shot=shots") });
    QVERIFY2(isComplaint(result.errors, { place.constData() }), qPrintable(result.errors));
    QCOMPARE(result.output, printed({ QStringLiteral("a"), QStringLiteral("z") }));
    QCOMPARE(result.exitCode, 1);
    QCOMPARE(QDir(folder() + QStringLiteral("/shots")).entryList(QDir::Files).size(),
             result.output.count(QLatin1Char('\n')));
}

void tst_GalleryCommand::windowNeedsADisplay()
{
    const Result result = run({});
    QCOMPARE(result.errors,
             QStringLiteral(GALLERY_NAME ": there is no display; --shot DIR writes pictures "
                                         "instead\n"));
    QCOMPARE(result.exitCode, 1);
}

void tst_GalleryCommand::writesAPictureOfEachTheme()
{
    const QString shots = folder() + QStringLiteral("/not/there/yet");
    const Result result = run({ QStringLiteral("--shot"), shots });
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
    const QStringList paths = bundledPictures(shots);
    QCOMPARE(result.output, paths.join(QLatin1Char('\n')) + QLatin1Char('\n'));
    for (const QString &path : paths) {
        const QSize size = QImage(path).size();
        QCOMPARE(size.width(), 1280);
        QVERIFY(path.endsWith(QLatin1String("-controls.png")) ? size.height() > 740
                                                              : size.height() == 740);
    }
    QCOMPARE(QDir(shots).entryList(QDir::Files).size(), paths.size());
}

void tst_GalleryCommand::picturesAreAlwaysTheSame()
{
    const QString first = folder() + QStringLiteral("/first");
    const QString second = folder() + QStringLiteral("/second");
    QCOMPARE(run({ QStringLiteral("--shot"), first }).exitCode, 0);
    QCOMPARE(run({ QStringLiteral("--shot"), second }).exitCode, 0);
    const QStringList paths = bundledPictures(first);
    const QStringList others = bundledPictures(second);
    for (int i = 0; i < paths.size(); ++i) {
        const QImage picture(paths.at(i));
        QVERIFY(!picture.isNull());
        QCOMPARE(QImage(others.at(i)), picture);
    }
}

void tst_GalleryCommand::pictureThatCannotBeWritten()
{
    write(QStringLiteral("file"), "in the way");
    const Result folderInTheWay = run({ QStringLiteral("--shot=file/shots") });
    QCOMPARE(folderInTheWay.errors,
             QStringLiteral(GALLERY_NAME ": can't create the folder \"file/shots\"\n"));
    QCOMPARE(folderInTheWay.exitCode, 1);

    QVERIFY(QDir(folder()).mkpath(QStringLiteral("shots/dusk.png")));
    const Result pictureInTheWay = run({ QStringLiteral("--shot=shots") });
    QCOMPARE(pictureInTheWay.errors,
             QStringLiteral(GALLERY_NAME ": can't write \"shots/dusk.png\"\n"));
    QCOMPARE(pictureInTheWay.output, printed({ QStringLiteral("daylight") }));
    QCOMPARE(pictureInTheWay.exitCode, 1);
}

void tst_GalleryCommand::runsFromAnInstallation()
{
    QProcess install;
    install.start(QStringLiteral(GALLERY_CMAKE),
                  { QStringLiteral("--install"), QStringLiteral(GALLERY_BUILD_DIR),
                    QStringLiteral("--prefix"), folder() + QStringLiteral("/prefix") });
    QVERIFY(install.waitForFinished(timeoutMilliseconds));
    QVERIFY2(install.exitCode() == 0, install.readAllStandardError().constData());

    const Result result = run({ QStringLiteral("--shot=shots") },
                              folder() + QStringLiteral("/prefix/bin/")
                                      + QFileInfo(QStringLiteral(GALLERY_PROGRAM)).fileName());
    QCOMPARE(result.errors, QString());
    QCOMPARE(result.exitCode, 0);
    QCOMPARE(result.output.split(QLatin1Char('\n'), Qt::SkipEmptyParts),
             bundledPictures(QStringLiteral("shots")));
}

TAVOLINS_TEST_MAIN(tst_GalleryCommand)
#include "tst_gallerycommand.moc"
