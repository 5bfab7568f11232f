// Documents with positions: one answer with Qt's parser, and places that hold what they claim.

#include "checker/document.h"
#include "checker/randomjson.h"
#include "support/testcase.h"

#include <QtCore/QDirIterator>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtTest/QtTest>

class tst_Document : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void positions_data();
    void positions();
    void linesWithoutTheirEnds();
    void excerptsOfLongLines();
    void pathsLeadToMembers();
    void membersThatAreReplaced();
    void agreesWithQt_data();
    void agreesWithQt();
    void agreesWithQtOnRandomTexts();
    void deepNesting_data();
    void deepNesting();
    void filesThatAreNone();
};

namespace {

QByteArray part(const Document &document, Range range)
{
    return document.text().mid(range.begin, range.end - range.begin);
}

/// What Qt reads from a single value.
QJsonValue parsedByQt(const QByteArray &value)
{
    // A list around it would count as one more level of nesting.
    if (value.startsWith('{'))
        return QJsonDocument::fromJson(value).object();
    if (value.startsWith('['))
        return QJsonDocument::fromJson(value).array();
    return QJsonDocument::fromJson('[' + value + ']').array().at(0);
}

/// What is wrong with the places in \a node, which Qt read as \a value; empty if nothing is.
QString placesProblem(const Document &document, const Node &node, const QJsonValue &value)
{
    if (node.value != value)
        return QStringLiteral("another value");
    if (parsedByQt(part(document, node.range)) != value)
        return QStringLiteral("another value at the place: ")
                + QString::fromUtf8(part(document, node.range));
    if (!value.isObject())
        return QString();
    QStringList keys;
    const QJsonObject object = value.toObject();
    for (const Node::Member &member : node.members) {
        if (parsedByQt(part(document, member.keyRange)).toString() != member.key)
            return QStringLiteral("another key at its place");
        if (member.isReplaced)
            continue;
        keys.append(member.key);
        QString problem = placesProblem(document, member.node, object.value(member.key));
        if (!problem.isEmpty())
            return problem;
    }
    keys.sort();
    QStringList expected = object.keys();
    expected.sort();
    return keys == expected ? QString() : QStringLiteral("other keys");
}

/// In which way \a text is understood otherwise than by Qt; empty if in none.
QString disagreement(const QByteArray &text)
{
    QJsonParseError error;
    const QJsonDocument byQt = QJsonDocument::fromJson(text, &error);
    const Document document(text);
    const bool isObject = error.error == QJsonParseError::NoError && byQt.isObject();
    if ((document.fault() == Document::NoFault) != isObject)
        return QStringLiteral("fault %1, Qt says %2")
                .arg(document.fault())
                .arg(error.errorString());
    if (document.object() != byQt.object())
        return QStringLiteral("another object");
    if (isObject)
        return placesProblem(document, document.root(), byQt.object());
    const Range range = document.faultRange();
    if (document.faultText().isEmpty() || range.begin < 0 || range.end < range.begin
        || range.end > qMax(1, text.size()))
        return QStringLiteral("the fault is not described");
    return QString();
}

} // namespace

void tst_Document::positions_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<int>("line");
    QTest::addColumn<int>("column");
    QTest::newRow("beginning") << QByteArray() << 1 << 1;
    QTest::newRow("second character") << QByteArray("a") << 1 << 2;
    QTest::newRow("characters of two, three and four bytes")
            << QByteArray("\xc3\xbc\xe6\xbc\xa2\xf0\x9f\x98\x80") << 1 << 4;
    QTest::newRow("second line") << QByteArray("ab\n") << 2 << 1;
    QTest::newRow("carriage returns belong to the line") << QByteArray("ab\r\ncd") << 2 << 3;
    QTest::newRow("a byte order mark takes no column") << QByteArray("\xef\xbb\xbf"
                                                                     "ab")
                                                       << 1 << 3;
    QTest::newRow("a tab is one character") << QByteArray("\t") << 1 << 2;
    QTest::newRow("bytes that are no UTF-8 count each") << QByteArray("\xfc\xff") << 1 << 3;
}

void tst_Document::positions()
{
    QFETCH(QByteArray, before);
    QFETCH(int, line);
    QFETCH(int, column);
    const Position position = Document::plain(before + "x").position(int(before.size()));
    QCOMPARE(position.line, line);
    QCOMPARE(position.column, column);
}

void tst_Document::linesWithoutTheirEnds()
{
    const Document document = Document::plain("\xef\xbb\xbf"
                                              "ab\r\ncd\n\nx");
    QCOMPARE(document.line(0), QByteArray());
    QCOMPARE(document.line(1), QByteArray("ab"));
    QCOMPARE(document.line(2), QByteArray("cd"));
    QCOMPARE(document.line(3), QByteArray());
    QCOMPARE(document.line(4), QByteArray("x"));
    QCOMPARE(document.line(5), QByteArray());
}

void tst_Document::excerptsOfLongLines()
{
    // Characters of one to four bytes, a zero byte among them, in more than one block of the
    // counts.
    const QString unit = QStringLiteral("a\u00fc\u6f22\U0001f600%1bc").arg(QChar(QChar::Null));
    const QString line = unit.repeated(400);
    const std::u32string characters = line.toStdU32String();
    const QByteArray before("first\n");
    const Document document = Document::plain(before + line.toUtf8() + "\r\nlast");
    int offset = int(before.size());
    for (size_t i = 0; i <= characters.size(); ++i) {
        QCOMPARE(document.position(offset).line, 2);
        QCOMPARE(document.position(offset).column, int(i) + 1);
        int column = -1;
        const QString excerpt = document.excerpt(offset, &column);
        QCOMPARE(column, qBound(0, int(i) - 60, int(characters.size()) - 100));
        QCOMPARE(excerpt, QString::fromStdU32String(characters.substr(size_t(column), 100)));
        if (i < characters.size())
            offset += int(QString::fromStdU32String(characters.substr(i, 1)).toUtf8().size());
    }
    int column = -1;
    QCOMPARE(document.excerpt(0, &column), QStringLiteral("first"));
    QCOMPARE(column, 0);
    QCOMPARE(document.excerpt(int(document.text().size()), &column), QStringLiteral("last"));
    QCOMPARE(column, 0);
}

void tst_Document::pathsLeadToMembers()
{
    const Document document(R"({ "a": { "b": { "c": 1 } }, "d": [ { "e": 1 } ] })");
    const Node::Member *member = document.find(QStringLiteral("a/b/c"));
    QVERIFY(member);
    QCOMPARE(part(document, member->keyRange), QByteArray("\"c\""));
    QCOMPARE(part(document, member->node.range), QByteArray("1"));
    QCOMPARE(part(document, document.find(QStringLiteral("a/b"))->node.range),
             QByteArray(R"({ "c": 1 })"));
    QCOMPARE(part(document, document.find(QStringLiteral("d"))->node.range),
             QByteArray(R"([ { "e": 1 } ])"));
    for (const char *path : { "x", "a/x", "a/b/c/d", "d/e", "" })
        QVERIFY2(!document.find(QString::fromLatin1(path)), path);
}

void tst_Document::membersThatAreReplaced()
{
    const Document document(R"({ "a": 1, "b": 2, "\u0061": 3, "a": { "c": 4 } })");
    QCOMPARE(int(document.root().members.size()), 4);
    QVERIFY(document.root().members[0].isReplaced);
    QVERIFY(!document.root().members[1].isReplaced);
    QVERIFY(document.root().members[2].isReplaced);
    QCOMPARE(document.find(QStringLiteral("a")), &document.root().members[3]);
    QCOMPARE(document.find(QStringLiteral("a/c"))->node.value, QJsonValue(4));
}

void tst_Document::agreesWithQt_data()
{
    QTest::addColumn<QString>("path");
    for (const char *folder : { "/fuzz/corpus", "/tests/checker/golden", "/themes" }) {
        const QString root = QStringLiteral(TAVOLINS_SOURCE_DIR) + QLatin1String(folder);
        QDirIterator file(root, { QStringLiteral("*.thm") }, QDir::Files,
                          QDirIterator::Subdirectories);
        while (file.hasNext()) {
            const QString path = file.next();
            QTest::newRow(qPrintable(path.mid(int(qstrlen(TAVOLINS_SOURCE_DIR)) + 1))) << path;
        }
    }
}

void tst_Document::agreesWithQt()
{
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(disagreement(file.readAll()), QString());
}

void tst_Document::agreesWithQtOnRandomTexts()
{
    RandomJson random(20260101);
    int understood = 0;
    int refused = 0;
    for (int i = 0; i < 20000; ++i) {
        QByteArray text = random.object();
        if (i % 2)
            text = random.mutated(text);
        const QString problem = disagreement(text);
        QVERIFY2(problem.isEmpty(),
                 qPrintable(problem + QLatin1String(" in ")
                            + QString::fromLatin1(text.toPercentEncoding(" \"{}[]:,"))));
        ++(Document(text).fault() == Document::NoFault ? understood : refused);
    }
    // Both kinds came up often.
    QVERIFY(understood > 5000);
    QVERIFY(refused > 5000);
}

void tst_Document::deepNesting_data()
{
    QTest::addColumn<QByteArray>("open");
    QTest::addColumn<QByteArray>("close");
    QTest::newRow("objects") << QByteArray("{\"a\":") << QByteArray("}");
    QTest::newRow("lists") << QByteArray("[") << QByteArray("]");
    QTest::newRow("never closed") << QByteArray("{\"a\":[") << QByteArray();
}

void tst_Document::deepNesting()
{
    QFETCH(QByteArray, open);
    QFETCH(QByteArray, close);
    for (const int depth : { 500, 1000, 1023, 1024, 1025, 100000 }) {
        const QByteArray text = "{\"x\":" + open.repeated(depth) + "1" + close.repeated(depth)
                + '}';
        QCOMPARE(disagreement(text), QString());
    }
}

void tst_Document::filesThatAreNone()
{
    QCOMPARE(Document::read(folder()).fault(), Document::Unreadable);
    QCOMPARE(Document::read(folder() + QLatin1String("/missing.thm")).fault(),
             Document::Unreadable);
    QVERIFY(QFile::link(QStringLiteral("nowhere"), folder() + QLatin1String("/link.thm")));
    const Document link = Document::read(folder() + QLatin1String("/link.thm"));
    QCOMPARE(link.fault(), Document::Unreadable);
    QCOMPARE(link.faultText(), QStringLiteral("the link leads nowhere"));
    // Reading it would never end.
    QCOMPARE(Document::read(QStringLiteral("/dev/zero")).fault(), Document::Unreadable);
}

TAVOLINS_TEST_MAIN(tst_Document)
#include "tst_document.moc"
