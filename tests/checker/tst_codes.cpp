// The codes: their table, their pages, and that the examples there show what they are for.

#include "checker/checker.h"
#include "support/testcase.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtTest/QtTest>

class tst_Codes : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void tableIsInTheOrderOfTheEnumeration();
    void names();
    void page_data();
    void page();
    void textHasNoMarkup_data();
    void textHasNoMarkup();
    void pagesAreOfCodesOnly();
    void examples_data();
    void examples();

private:
    QStringList codesFoundIn(const QString &document);
};

namespace {

QStringList examplesOf(const CodeInfo &info)
{
    static const QRegularExpression block(QStringLiteral("```json\\n(.*?)```"),
                                          QRegularExpression::DotMatchesEverythingOption);
    QStringList examples;
    QRegularExpressionMatchIterator matches = block.globalMatch(Codes::page(info.code));
    while (matches.hasNext())
        examples.append(matches.next().captured(1));
    return examples;
}

} // namespace

void tst_Codes::tableIsInTheOrderOfTheEnumeration()
{
    for (int i = 0; i < Codes::all().size(); ++i) {
        QCOMPARE(int(Codes::all().at(i).code), i);
        QCOMPARE(Codes::info(Code(i)).name, Codes::all().at(i).name);
    }
}

void tst_Codes::names()
{
    const QRegularExpression kebabCase(QStringLiteral("^[a-z]+(-[a-z]+[0-9]*)*$"));
    QSet<QString> seen;
    for (const CodeInfo &info : Codes::all()) {
        QVERIFY2(kebabCase.match(info.name).hasMatch(), qPrintable(info.name));
        QVERIFY2(!seen.contains(info.name), qPrintable(info.name));
        seen.insert(info.name);
        QCOMPARE(Codes::find(info.name), &info);
        QVERIFY(!info.summary.isEmpty());
    }
    QVERIFY(!Codes::find(QStringLiteral("no-such-code")));
    QVERIFY(!Codes::find(QString()));
}

void tst_Codes::page_data()
{
    QTest::addColumn<int>("code");
    for (const CodeInfo &info : Codes::all())
        QTest::newRow(qPrintable(info.name)) << int(info.code);
}

void tst_Codes::page()
{
    QFETCH(int, code);
    const QString text = Codes::page(Code(code));
    QVERIFY(text.size() > 80);
    QVERIFY(!text.contains(QLatin1String("\n#")));
}

void tst_Codes::pagesAreOfCodesOnly()
{
    QFile file(QStringLiteral(TAVOLINS_SOURCE_DIR "/docs/checker-codes.md"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QStringList headings;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(QLatin1String("## ")))
            headings.append(line.mid(3));
    }
    QCOMPARE(headings, Codes::names());
}

void tst_Codes::textHasNoMarkup_data()
{
    QTest::addColumn<int>("code");
    for (const CodeInfo &info : Codes::all())
        QTest::newRow(qPrintable(info.name)) << int(info.code);
}

/// All words of the page, its examples indented below a label, and no signs of Markdown.
void tst_Codes::textHasNoMarkup()
{
    QFETCH(int, code);
    const QString text = Codes::text(Code(code));
    static const QRegularExpression markup(QStringLiteral("```|\\*\\w|\\]\\("));
    QVERIFY2(!text.contains(markup), qPrintable(text));
    const QStringList examples = examplesOf(Codes::info(Code(code)));
    QStringList labels;
    if (!examples.isEmpty())
        labels = QStringList{ QStringLiteral("Example:"), QStringLiteral("Mended:") };
    for (int i = 0; i < examples.size(); ++i) {
        QString indented = examples.at(i).trimmed();
        indented.replace(QLatin1Char('\n'), QLatin1String("\n    "));
        const QString expected = labels.at(i) + QStringLiteral("\n\n    ") + indented;
        QVERIFY2(text.contains(expected), qPrintable(text));
    }
    QString words = text;
    for (const QString &label : qAsConst(labels))
        words.remove(label);
    words.remove(QLatin1Char('*'));
    QString page = Codes::page(Code(code));
    page.remove(QLatin1String("```json")).remove(QLatin1String("```")).remove(QLatin1Char('*'));
    QCOMPARE(words.simplified(), page.simplified());
}

void tst_Codes::examples_data()
{
    QTest::addColumn<int>("code");
    for (const CodeInfo &info : Codes::all()) {
        if (!examplesOf(info).isEmpty())
            QTest::newRow(qPrintable(info.name)) << int(info.code);
    }
}

QStringList tst_Codes::codesFoundIn(const QString &document)
{
    write(QStringLiteral("themes/example.thm"), document.toUtf8());
    QStringList codes;
    const CheckReport report = checkThemes({ folder() + QLatin1String("/themes") });
    for (const Problem &problem : report.problems)
        codes.append(Codes::info(problem.code).name);
    return codes;
}

void tst_Codes::examples()
{
    QFETCH(int, code);
    const CodeInfo &info = Codes::info(Code(code));
    const QStringList examples = examplesOf(info);
    QCOMPARE(examples.size(), 2);
    const QStringList wrong = codesFoundIn(examples.first());
    QVERIFY2(wrong.contains(info.name), qPrintable(wrong.join(QLatin1Char(' '))));
    QCOMPARE(codesFoundIn(examples.last()), QStringList());
}

TAVOLINS_TEST_MAIN(tst_Codes)
#include "tst_codes.moc"
