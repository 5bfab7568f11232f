#include "readme/markdown.h"
#include "support/testcase.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QProcess>
#include <QtTest/QtTest>

/// What the README has its reader type into a shell or a CMakeLists.txt.
class tst_Commands : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void commands_data();
    void commands();
    void exampleRunsByItsCommand();
    void nativeCodeLinksThePackage();

private:
    struct Result
    {
        int exitCode;
        QByteArray output;
    };
    static Result run(const QString &folder, const QString &program, const QStringList &arguments);

    const Markdown m_readme{ QStringLiteral("README.md") };
    QTemporaryDir m_checkout;
};

namespace {

const QString cmake = QStringLiteral(TAVOLINS_CMAKE);

QString withoutRemark(const QString &line)
{
    return line.section(QLatin1Char('#'), 0, 0).trimmed();
}

} // namespace

/// Runs a program in \a folder, as a child that knows nothing of this build.
tst_Commands::Result tst_Commands::run(const QString &folder, const QString &program,
                                       const QStringList &arguments)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    const bool hasEnded = process.waitForFinished(200000)
            && process.exitStatus() == QProcess::NormalExit;
    return { hasEnded ? process.exitCode() : -1, process.readAll() };
}

/// Makes what looks like a fresh checkout, so that commands write nothing into this one.
void tst_Commands::initTestCase()
{
    QVERIFY(m_checkout.isValid());
    const QDir source(QStringLiteral(TAVOLINS_SOURCE_DIR));
    const QStringList names = source.entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    for (const QString &name : names) {
        if (name != QLatin1String("build"))
            QVERIFY(QFile::link(source.filePath(name), m_checkout.filePath(name)));
    }
}

void tst_Commands::commands_data()
{
    QTest::addColumn<QStringList>("words");
    const QList<Markdown::Block> blocks = m_readme.blocks();
    for (const Markdown::Block &block : blocks) {
        if (!block.language.isEmpty())
            continue;
        const QStringList lines = block.code.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        for (const QString &line : lines) {
            const QString command = withoutRemark(line);
            QTest::newRow(qPrintable(command)) << command.split(QLatin1Char(' '));
        }
    }
}

/// Commands that take minutes, or install into the system, are only tried as far as they are sure
/// to mean what the reader expects.
void tst_Commands::commands()
{
    QFETCH(QStringList, words);
    const QString program = words.takeFirst();
    if (program.startsWith(QLatin1String("scripts/"))) {
        QVERIFY(words.isEmpty());
        const QFileInfo script(m_checkout.filePath(program));
        QVERIFY(script.isFile() && script.isExecutable());
        const Result read = run(m_checkout.path(), QStringLiteral("bash"),
                                { QStringLiteral("-n"), program });
        QCOMPARE(read.output, QByteArray());
        QCOMPARE(read.exitCode, 0);
        return;
    }
    QCOMPARE(program, QStringLiteral("cmake"));
    if (words.first() == QLatin1String("--install")) {
        QCOMPARE(words.size(), 2);
        QVERIFY(QFileInfo(m_checkout.filePath(words.at(1) + QLatin1String("/cmake_install.cmake")))
                        .isFile());
        return;
    }
    // A build names what it would do.
    if (words.first() == QLatin1String("--build"))
        words += { QStringLiteral("--"), QStringLiteral("-n") };
    const Result result = run(m_checkout.path(), cmake, words);
    QVERIFY2(result.exitCode == 0, result.output.constData());
    QVERIFY2(!result.output.contains("not used by the project"), result.output.constData());
}

void tst_Commands::exampleRunsByItsCommand()
{
    QStringList commands;
    const QStringList pieces = Markdown::codeIn(m_readme.prose());
    for (const QString &piece : pieces) {
        if (piece.startsWith(QLatin1String("qml ")))
            commands.append(piece);
    }
    QCOMPARE(commands.size(), 1);
    QStringList arguments = commands.first().split(QLatin1Char(' '));
    const QString program = arguments.takeFirst();
    const int importPath = arguments.indexOf(QStringLiteral("build/release/qml"));
    QVERIFY(importPath > 0);
    arguments[importPath] = QStringLiteral(TAVOLINS_QML_IMPORT_PATH);

    write(QStringLiteral("themes/harbour.thm"), m_readme.only(QStringLiteral("json")).toUtf8());
    const QString module = QStringLiteral("import " TAVOLINS_QML_URI " ");
    write(QStringLiteral("harbour.qml"),
          m_readme.only(QStringLiteral("qml"))
                  .replace(QStringLiteral("import Tavolins "), module)
                  .toUtf8());
    // Ends the program, and tells what there was to see.
    write(QStringLiteral("end.qml"), "import QtQml 2.12\n" + module.toUtf8() + R"(1.0
        Timer {
            running: true
            interval: 100
            onTriggered: Qt.exit(ThemeManager.current.title === "Harbour" ? 42 : 1)
        }
    )");
    const Result result = run(folder(), program, arguments + QStringList(QStringLiteral("end.qml")));
    QCOMPARE(result.output, QByteArray());
    QCOMPARE(result.exitCode, 42);
}

void tst_Commands::nativeCodeLinksThePackage()
{
    const QString prefix = folder() + QStringLiteral("/prefix");
    const Result installed = run(folder(), cmake,
                                 { QStringLiteral("--install"),
                                   QStringLiteral(TAVOLINS_BUILD_DIR), QStringLiteral("--prefix"),
                                   prefix });
    QVERIFY2(installed.exitCode == 0, installed.output.constData());
    write(QStringLiteral("CMakeLists.txt"),
          "cmake_minimum_required(VERSION 3.16)\n"
          "project(Application LANGUAGES CXX)\n"
          "add_executable(application main.cpp)\n"
                  + m_readme.only(QStringLiteral("cmake")).toUtf8());
    write(QStringLiteral("main.cpp"), R"(
        #include <manager/thememanager.h>
        #include <QtGui/QGuiApplication>
        int main(int argc, char *argv[])
        {
            QGuiApplication application(argc, argv);
            return 40 + (Theme::global() == ThemeManager::getInstance()->current() ? 2 : 0);
        }
    )");
    const Result configured = run(folder(), cmake,
                                  { QStringLiteral("-S."), QStringLiteral("-Bbuild"),
                                    QStringLiteral("-DCMAKE_CXX_COMPILER=" TAVOLINS_CXX_COMPILER),
                                    QStringLiteral("-DCMAKE_PREFIX_PATH=") + prefix });
    QVERIFY2(configured.exitCode == 0, configured.output.constData());
    const Result built = run(folder(), cmake,
                             { QStringLiteral("--build"), QStringLiteral("build") });
    QVERIFY2(built.exitCode == 0, built.output.constData());
    const Result ran = run(folder(), folder() + QStringLiteral("/build/application"), {});
    QCOMPARE(ran.output, QByteArray());
    QCOMPARE(ran.exitCode, 42);
}

TAVOLINS_TEST_MAIN(tst_Commands)
#include "tst_commands.moc"
