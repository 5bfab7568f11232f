// Theme files with the exact report of each. A case is a theme file in a folder of its own, or a
// folder with a file of paths that are checked if it is not the folder itself. Cases stand below
// the code that they are about: those called "triggers" show it, those called "near-miss" don't.
//
// TAVOLINS_UPDATE_GOLDEN=1 writes the reports anew; look at each difference before it is committed.

#include "checker/report.h"
#include "support/testcase.h"
#include "support/testfont.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtGui/QFontDatabase>
#include <QtTest/QtTest>

#include <algorithm>

class tst_Golden : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void report_data();
    void report();
    void everyCodeHasItsCases();
    void everyReportHasItsCase();

private:
    static QDir golden()
    {
        return QDir(QStringLiteral(TAVOLINS_SOURCE_DIR "/tests/checker/golden"));
    }
    static QStringList cases(const QString &code);
};

namespace {

const int fewestThemeFiles = 120;

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString caseName(const QString &fileName)
{
    return fileName.endsWith(QLatin1String(".thm")) ? fileName.chopped(4) : fileName;
}

} // namespace

void tst_Golden::initTestCase()
{
    // A family whose styles are the same on every machine.
    QVERIFY(QFontDatabase::addApplicationFontFromData(TestFont::content()) >= 0);
}

QStringList tst_Golden::cases(const QString &code)
{
    QDir folder = golden();
    folder.setPath(folder.filePath(code));
    QStringList names = folder.entryList({ QStringLiteral("*.thm") }, QDir::Files);
    names += folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    return names;
}

void tst_Golden::report_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("name");
    const QStringList codes = golden().entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &code : codes) {
        const QStringList names = cases(code);
        for (const QString &name : names)
            QTest::newRow(qPrintable(code + QLatin1Char('/') + caseName(name))) << code << name;
    }
}

void tst_Golden::report()
{
    QFETCH(QString, code);
    QFETCH(QString, name);
    const QString source = golden().filePath(code + QLatin1Char('/') + name);
    QStringList paths{ name };
    if (QFileInfo(source).isDir()) {
        QVERIFY(QDir::setCurrent(golden().filePath(code)));
        const QString list = QString::fromUtf8(contentOf(source + QLatin1String("/paths.txt")));
        if (!list.isEmpty())
            paths = list.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    } else {
        write(QStringLiteral("case/") + name, contentOf(source));
        QVERIFY(QDir::setCurrent(folder()));
        paths = QStringList{ QStringLiteral("case") };
    }
    CheckOptions options;
    options.importPaths = QStringList{ QStringLiteral(TAVOLINS_QML_IMPORT_PATH) };
    const CheckReport report = checkThemes(paths, options);
    QCOMPARE(report.failures, QStringList());
    Report::TextStyle style;
    style.hasSource = true;
    const QString text = Report::text(report, style);

    const QString expectedPath = golden().filePath(code + QLatin1Char('/') + caseName(name)
                                                   + QLatin1String(".report"));
    if (qEnvironmentVariableIsSet("TAVOLINS_UPDATE_GOLDEN")) {
        QFile file(expectedPath);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
    }
    QCOMPARE(text, QString::fromUtf8(contentOf(expectedPath)));
    const bool isTriggered = text.contains(QStringLiteral("[%1]").arg(code));
    QCOMPARE(isTriggered, name.startsWith(QLatin1String("triggers")));
    QVERIFY(isTriggered || name.startsWith(QLatin1String("near-miss")));
}

void tst_Golden::everyCodeHasItsCases()
{
    int themeFiles = 0;
    for (const CodeInfo &info : Codes::all()) {
        const QStringList names = cases(info.name);
        for (const char *kind : { "triggers", "near-miss" }) {
            const bool hasCase = std::any_of(
                    names.begin(), names.end(),
                    [kind](const QString &name) { return name.startsWith(QLatin1String(kind)); });
            QVERIFY2(hasCase, qPrintable(info.name + QLatin1Char(' ') + QLatin1String(kind)));
        }
        QDirIterator file(golden().filePath(info.name), { QStringLiteral("*.thm") }, QDir::Files,
                          QDirIterator::Subdirectories);
        for (; file.hasNext(); file.next())
            ++themeFiles;
    }
    QVERIFY2(themeFiles >= fewestThemeFiles, qPrintable(QString::number(themeFiles)));
}

void tst_Golden::everyReportHasItsCase()
{
    QDirIterator report(golden().path(), { QStringLiteral("*.report") }, QDir::Files,
                        QDirIterator::Subdirectories);
    while (report.hasNext()) {
        const QString path = report.next().chopped(int(qstrlen(".report")));
        QVERIFY2(QFileInfo::exists(path) || QFileInfo::exists(path + QLatin1String(".thm")),
                 qPrintable(path));
    }
}

TAVOLINS_TEST_MAIN(tst_Golden)
#include "tst_golden.moc"
