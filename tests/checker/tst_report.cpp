// The forms of a report.

#include "checker/report.h"
#include "support/testcase.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtTest/QtTest>

class tst_Report : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void textWithoutSource();
    void colors();
    void controlsOfTheTerminalAreReplaced();
    void summaries_data();
    void summaries();
    void json();
    void sarif();

private:
    CheckReport reportOf(const QByteArray &document);
};

CheckReport tst_Report::reportOf(const QByteArray &document)
{
    write(QStringLiteral("themes/t.thm"), document);
    QDir::setCurrent(folder());
    return checkThemes({ QStringLiteral("themes") });
}

void tst_Report::textWithoutSource()
{
    const CheckReport report = reportOf("{\n  \"title\": \"T\",\n  \"globel\": { \"x\": 1 }\n}\n");
    QCOMPARE(Report::text(report, Report::TextStyle()),
             QStringLiteral("themes/t.thm:3:3: warning: `globel` is the name of a class here "
                            "[unknown-key]\n"
                            "    help: did you mean `global`?\n"
                            "1 theme: 1 warning\n"));
}

void tst_Report::colors()
{
    Report::TextStyle style;
    style.hasColors = true;
    style.hasSource = true;
    QCOMPARE(Report::text(reportOf(R"({ "title": "" })"), style),
             QStringLiteral("\033[1mthemes/t.thm:1:12:\033[0m \033[1;31merror:\033[0m the `title` "
                            "is empty, so nothing can find the theme [empty-title]\n"
                            "    { \"title\": \"\" }\n"
                            "    \033[32m           ^~\033[0m\n"
                            "1 theme: 1 error\n"));
}

void tst_Report::controlsOfTheTerminalAreReplaced()
{
    Report::TextStyle style;
    style.hasSource = true;
    const CheckReport report = reportOf("{ \"title\": \"T\", \"a\x1b[2J \xe2\x80\xae\x7f\": 1 }");
    const QString text = Report::text(report, style);
    QVERIFY(text.contains(QLatin1String("[2J")));
    for (const QChar character : text) {
        QVERIFY(character == QLatin1Char('\n')
                || (character.category() != QChar::Other_Control
                    && character.category() != QChar::Other_Format));
    }
}

void tst_Report::summaries_data()
{
    QTest::addColumn<int>("themes");
    QTest::addColumn<QVector<int>>("severities");
    QTest::addColumn<QString>("summary");
    const int error = int(Severity::Error);
    const int warning = int(Severity::Warning);
    const int note = int(Severity::Note);
    QTest::newRow("nothing") << 0 << QVector<int>() << QStringLiteral("0 themes: no problem");
    QTest::newRow("clean") << 1 << QVector<int>() << QStringLiteral("1 theme: no problem");
    QTest::newRow("one of each") << 2 << QVector<int>{ note, error, warning }
                                 << QStringLiteral("2 themes: 1 error, 1 warning, 1 note");
    QTest::newRow("several") << 9 << QVector<int>{ warning, warning, note, note }
                             << QStringLiteral("9 themes: 2 warnings, 2 notes");
}

void tst_Report::summaries()
{
    QFETCH(int, themes);
    QFETCH(QVector<int>, severities);
    QFETCH(QString, summary);
    CheckReport report;
    report.themes = themes;
    for (const int severity : qAsConst(severities)) {
        Problem problem;
        problem.severity = Severity(severity);
        report.problems.append(problem);
    }
    QCOMPARE(Report::summary(report), summary);
}

void tst_Report::json()
{
    const QByteArray text = Report::json(
            reportOf("{\n  \"title\": \"T\",\n  \"globel\": { \"x\": 1 }\n}\n"));
    QCOMPARE(text.count('\n'), 1);
    QVERIFY(text.endsWith('\n'));
    const QJsonObject expected = QJsonDocument::fromJson(R"({
        "problems": [ { "file": "themes/t.thm", "line": 3, "column": 3, "endLine": 3,
            "endColumn": 11, "severity": "warning", "code": "unknown-key",
            "message": "`globel` is the name of a class here",
            "help": [ "did you mean `global`?" ] } ],
        "themes": 1, "errors": 0, "warnings": 1, "notes": 0, "failures": [] })")
                                         .object();
    QCOMPARE(QJsonDocument::fromJson(text).object(), expected);
}

void tst_Report::sarif()
{
    const CheckReport report = reportOf("{\n  \"title\": \"T\",\n  \"globel\": { \"x\": 1 }\n}\n");
    const QJsonObject log = QJsonDocument::fromJson(Report::sarif(report)).object();
    QCOMPARE(log.value(QLatin1String("version")).toString(), QStringLiteral("2.1.0"));
    QCOMPARE(log.value(QLatin1String("runs")).toArray().size(), 1);
    const QJsonObject run = log.value(QLatin1String("runs")).toArray().at(0).toObject();
    QCOMPARE(run.value(QLatin1String("columnKind")).toString(),
             QStringLiteral("unicodeCodePoints"));

    const QJsonObject driver =
            run.value(QLatin1String("tool")).toObject().value(QLatin1String("driver")).toObject();
    QCOMPARE(driver.value(QLatin1String("name")).toString(), QStringLiteral("tavolins"));
    const QJsonArray rules = driver.value(QLatin1String("rules")).toArray();
    QCOMPARE(rules.size(), Codes::all().size());
    QStringList ids;
    for (const QJsonValue &rule : rules)
        ids.append(rule.toObject().value(QLatin1String("id")).toString());
    QCOMPARE(ids, Codes::names());

    const QJsonArray results = run.value(QLatin1String("results")).toArray();
    QCOMPARE(results.size(), 1);
    const QJsonObject expected = QJsonDocument::fromJson(R"({
        "ruleId": "unknown-key", "ruleIndex": 0, "level": "warning",
        "message": { "text": "`globel` is the name of a class here\ndid you mean `global`?" },
        "locations": [ { "physicalLocation": {
            "artifactLocation": { "uri": "themes/t.thm" },
            "region": { "startLine": 3, "startColumn": 3, "endLine": 3, "endColumn": 11 } } } ]
        })")
                                         .object();
    QJsonObject result = results.at(0).toObject();
    const int index = result.value(QLatin1String("ruleIndex")).toInt();
    QCOMPARE(rules.at(index).toObject().value(QLatin1String("id")),
             result.value(QLatin1String("ruleId")));
    result.insert(QStringLiteral("ruleIndex"), 0);
    QCOMPARE(result, expected);
}

TAVOLINS_TEST_MAIN(tst_Report)
#include "tst_report.moc"
