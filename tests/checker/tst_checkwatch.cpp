// `tavolins check --watch`, raced by writers that save in the ways that editors do.

#include "support/testcase.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QTimer>
#include <QtTest/QtTest>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <random>

class tst_CheckWatch : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void races();
    void savesWithoutAChangeAreNotTold();
    void otherFilesOfTheFolderAreFollowed_data();
    void otherFilesOfTheFolderAreFollowed();
    void folderThatIsReplaced();
};

namespace {

const int saves = 200;
const int startMilliseconds = 20000;
const int lostMilliseconds = 10000;

/// Between two operations that are further apart a report may come.
const int burstMilliseconds = 100;

/// After so long a burst is told of even if it goes on.
const int longestBurstMilliseconds = 900;

/// Which of the saves ends a report, told by a color that is none.
QByteArray themeOf(int serial)
{
    return "{\n    \"title\": \"T\",\n    \"global\": { \"colors\": { \"selection\": \"serial-"
            + QByteArray::number(serial) + "\" } }\n}\n";
}

void put(const QString &path, const QByteArray &text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("can't write %s", qPrintable(path));
}

/// The tool, watching a folder; collects its reports.
class Watcher : public QObject
{
public:
    struct Told
    {
        qint64 time;
        /// The serial in the report; -1 if there is none.
        int serial;
        QJsonObject report;
    };

    explicit Watcher(const QStringList &paths)
    {
        m_clock.start();
        connect(&m_process, &QProcess::readyReadStandardOutput, this, [this] { read(); });
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
        m_process.setProcessEnvironment(environment);
        m_process.start(QStringLiteral(TOOL_PROGRAM),
                        QStringList{ QStringLiteral("check"), QStringLiteral("--watch"),
                                     QStringLiteral("--format"), QStringLiteral("json") }
                                + paths);
    }

    ~Watcher() override
    {
        m_process.disconnect(this);
        m_process.kill();
        m_process.waitForFinished();
    }

    qint64 now() const { return m_clock.elapsed(); }
    const QVector<Told> &told() const { return m_told; }
    bool isRunning() const { return m_process.state() == QProcess::Running; }
    QByteArray errors() { return m_process.readAllStandardError(); }

    bool waitForReports(int count)
    {
        return QTest::qWaitFor([&] { return m_told.size() >= count; }, startMilliseconds);
    }

private:
    void read()
    {
        m_output += m_process.readAllStandardOutput();
        for (auto end = m_output.indexOf('\n'); end >= 0; end = m_output.indexOf('\n')) {
            Told told;
            told.time = now();
            told.serial = -1;
            told.report = QJsonDocument::fromJson(m_output.left(end)).object();
            m_output.remove(0, end + 1);
            static const QRegularExpression serial(QStringLiteral("serial-(\\d+)"));
            const QJsonArray problems = told.report.value(QLatin1String("problems")).toArray();
            for (const QJsonValue &problem : problems) {
                const QString message =
                        problem.toObject().value(QLatin1String("message")).toString();
                const QRegularExpressionMatch match = serial.match(message);
                if (match.hasMatch())
                    told.serial = match.captured(1).toInt();
            }
            m_told.append(told);
        }
    }

    QElapsedTimer m_clock;
    QProcess m_process;
    QByteArray m_output;
    QVector<Told> m_told;
};

enum Way {
    InPlace,
    TwoWrites,
    RenameOver,
    BackupAndCreate,
    DeleteAndCreate,
    LinkReplaced,
    TargetReplaced,
    TargetInPlace,
    WayCount
};

const char *const wayNames[] = { "in place",
                                 "in place, in two writes",
                                 "rename over",
                                 "move to a backup and create",
                                 "delete and create",
                                 "another target for a link",
                                 "rename over a link's target",
                                 "in place behind a link" };

/// Saves a file in one way again and again, with pauses of all lengths, and holds the reports
/// against that.
class Race : public QObject
{
public:
    Race(const QString &folder, Way way)
        : m_way(way)
        , m_folder(folder)
        , m_random(unsigned(way) + 1)
    {
        QDir().mkpath(folder + QLatin1String("/themes"));
        QDir().mkpath(folder + QLatin1String("/elsewhere"));
        m_file = folder + QLatin1String("/themes/t.thm");
        // A folder without any theme, in the middle of a save, would be an error.
        put(folder + QLatin1String("/themes/other.thm"), R"({ "title": "Other" })");
        if (isLinked()) {
            put(target(), themeOf(0));
            QFile::link(target(), m_file);
        } else {
            put(m_file, themeOf(0));
        }
        m_watcher = std::make_unique<Watcher>(QStringList(folder + QLatin1String("/themes")));
        m_timer.setSingleShot(true);
        connect(&m_timer, &QTimer::timeout, this, [this] { step(); });
    }

    Watcher &watcher() { return *m_watcher; }
    void start() { m_timer.start(0); }
    bool isFinished() const { return m_isFinished; }

    /// What is wrong; empty if nothing is.
    QString problem()
    {
        if (!m_problem.isEmpty())
            return m_problem;
        if (!m_watcher->isRunning())
            return QStringLiteral("the tool has ended");
        const QByteArray errors = m_watcher->errors();
        if (!errors.isEmpty())
            return QString::fromUtf8(errors);
        int last = -1;
        for (const Watcher::Told &told : m_watcher->told()) {
            if (told.serial >= 0 && told.serial < last)
                return QStringLiteral("%1 is told after %2").arg(told.serial).arg(last);
            last = qMax(last, told.serial);
        }
        if (m_watcher->told().size() > 1 + bursts())
            return QStringLiteral("%1 reports of %2 bursts")
                    .arg(m_watcher->told().size() - 1)
                    .arg(bursts());
        return QString();
    }

    /// How long after each save that was waited for the report came, in milliseconds.
    const QVector<qint64> &delays() const { return m_delays; }

    /// How many reports there may be: one for each burst, and one for each second of it.
    int bursts() const
    {
        int count = 0;
        qint64 begin = 0;
        for (int i = 0; i < m_operations.size(); ++i) {
            const qint64 time = m_operations.at(i);
            const bool isLater = i == 0 || time - m_operations.at(i - 1) >= burstMilliseconds;
            if (isLater || time - begin >= longestBurstMilliseconds) {
                ++count;
                begin = time;
            }
        }
        return count;
    }

private:
    bool isLinked() const { return m_way >= LinkReplaced; }

    QString target() const
    {
        return m_folder + QLatin1String("/elsewhere/")
                + (m_way == LinkReplaced ? QString::number(m_serial) : QStringLiteral("target"));
    }

    int below(int limit) { return int(m_random() % unsigned(limit)); }

    void note() { m_operations.append(m_watcher->now()); }

    void step()
    {
        if (m_hasHalf) {
            finishSave();
            return;
        }
        if (m_isWaiting && !isToldOf()) {
            if (m_watcher->now() - m_saved > lostMilliseconds) {
                m_problem = QStringLiteral("the report of save %1 is lost").arg(m_serial);
                m_isFinished = true;
                return;
            }
            m_timer.start(5);
            return;
        }
        m_isWaiting = false;
        if (m_serial == saves) {
            m_isFinished = true;
            return;
        }
        ++m_serial;
        beginSave();
    }

    bool isToldOf()
    {
        const Watcher::Told &told = m_watcher->told().last();
        if (told.serial != m_serial)
            return false;
        m_delays.append(told.time - m_saved);
        return true;
    }

    void beginSave()
    {
        const QByteArray text = themeOf(m_serial);
        const QString other = m_folder + QLatin1String("/themes/t.thm~");
        note();
        switch (m_way) {
        case InPlace:
        case TargetInPlace:
            put(m_file, text);
            break;
        case TwoWrites:
            put(m_file, text.left(20));
            m_hasHalf = true;
            m_timer.start(below(40));
            return;
        case RenameOver:
            put(other, text);
            std::rename(QFile::encodeName(other).constData(),
                        QFile::encodeName(m_file).constData());
            break;
        case BackupAndCreate:
            QFile::remove(other);
            QFile::rename(m_file, other);
            put(m_file, text);
            break;
        case DeleteAndCreate:
            QFile::remove(m_file);
            m_hasHalf = true;
            m_timer.start(below(40));
            return;
        case LinkReplaced:
            put(target(), text);
            QFile::link(target(), other);
            std::rename(QFile::encodeName(other).constData(),
                        QFile::encodeName(m_file).constData());
            break;
        case TargetReplaced:
            put(target() + QLatin1String(".new"), text);
            std::rename(QFile::encodeName(target() + QLatin1String(".new")).constData(),
                        QFile::encodeName(target()).constData());
            break;
        case WayCount:
            break;
        }
        endSave();
    }

    void finishSave()
    {
        m_hasHalf = false;
        put(m_file, themeOf(m_serial));
        endSave();
    }

    void endSave()
    {
        note();
        m_saved = m_watcher->now();
        // Most saves are not waited for: the next one comes before, in or after the report of it.
        m_isWaiting = below(4) == 0 || m_serial == saves;
        m_timer.start(m_isWaiting ? 0 : below(3) == 0 ? below(10) : below(260));
    }

    const Way m_way;
    const QString m_folder;
    QString m_file;
    std::mt19937 m_random;
    std::unique_ptr<Watcher> m_watcher;
    QTimer m_timer;
    QVector<qint64> m_operations;
    QVector<qint64> m_delays;
    qint64 m_saved = 0;
    int m_serial = 0;
    bool m_hasHalf = false;
    bool m_isWaiting = false;
    bool m_isFinished = false;
    QString m_problem;
};

} // namespace

void tst_CheckWatch::races()
{
    std::vector<std::unique_ptr<Race>> races;
    races.reserve(WayCount);
    for (int way = 0; way < WayCount; ++way)
        races.push_back(std::make_unique<Race>(folder() + QLatin1Char('/') + QString::number(way),
                                               Way(way)));
    for (const auto &race : races)
        QVERIFY(race->watcher().waitForReports(1));
    for (const auto &race : races)
        race->start();
    const auto areFinished = [&races] {
        return std::all_of(races.begin(), races.end(),
                           [](const auto &race) { return race->isFinished(); });
    };
    QVERIFY(QTest::qWaitFor(areFinished, 300000));
    // Nothing more comes.
    QTest::qWait(500);
    for (int way = 0; way < WayCount; ++way) {
        const QString problem = races[size_t(way)]->problem();
        QVERIFY2(problem.isEmpty(),
                 qPrintable(QString::fromLatin1(wayNames[way]) + QLatin1String(": ") + problem));
    }

    QVector<qint64> delays;
    for (const auto &race : races)
        delays += race->delays();
    std::sort(delays.begin(), delays.end());
    const qint64 median = delays.at(delays.size() / 2);
    std::printf("%d reports waited for: median %lld ms, 95 %% %lld ms, longest %lld ms\n",
                int(delays.size()), median, delays.at(delays.size() * 95 / 100), delays.last());
    QVERIFY2(median <= 300, qPrintable(QString::number(median)));
}

void tst_CheckWatch::savesWithoutAChangeAreNotTold()
{
    const QString path = write(QStringLiteral("t/a.thm"), themeOf(1));
    Watcher watcher({ folder() + QLatin1String("/t") });
    QVERIFY(watcher.waitForReports(1));
    put(path, themeOf(1));
    QTest::qWait(400);
    put(path + QLatin1String(".new"), themeOf(1));
    QVERIFY(std::rename(QFile::encodeName(path + QLatin1String(".new")).constData(),
                        QFile::encodeName(path).constData())
            == 0);
    QTest::qWait(400);
    write(QStringLiteral("t/notes.txt"), "of no interest");
    QTest::qWait(400);
    QCOMPARE(watcher.told().size(), 1);
    put(path, themeOf(2));
    QVERIFY(watcher.waitForReports(2));
    QCOMPARE(watcher.told().last().serial, 2);
}

void tst_CheckWatch::otherFilesOfTheFolderAreFollowed_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("a new theme") << QStringLiteral("t/b.thm") << QByteArray("{");
    QTest::newRow("a hidden theme") << QStringLiteral("t/.b.thm") << QByteArray("{");
    QTest::newRow("a style in a new folder")
            << QStringLiteral("t/styles/Card.qml") << QByteArray("Item {");
    QTest::newRow("a font in a new folder")
            << QStringLiteral("t/fonts/x.ttf") << QByteArray("no font");
}

void tst_CheckWatch::otherFilesOfTheFolderAreFollowed()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    write(QStringLiteral("t/a.thm"), themeOf(1));
    Watcher watcher({ folder() + QLatin1String("/t") });
    QVERIFY(watcher.waitForReports(1));
    const auto problems = [&watcher] {
        return watcher.told().last().report.value(QLatin1String("problems")).toArray().size();
    };
    QCOMPARE(problems(), 1);
    write(name, content);
    QTRY_VERIFY_WITH_TIMEOUT(problems() > 1, lostMilliseconds);
    // Once more, in the file that is watched by now.
    const int reports = int(watcher.told().size());
    write(name, content + " ");
    QTRY_VERIFY_WITH_TIMEOUT(watcher.told().size() > reports, lostMilliseconds);
    QFile::remove(folder() + QLatin1Char('/') + name);
    QTRY_COMPARE_WITH_TIMEOUT(problems(), 1, lostMilliseconds);
}

void tst_CheckWatch::folderThatIsReplaced()
{
    write(QStringLiteral("t/a.thm"), themeOf(1));
    write(QStringLiteral("new/a.thm"), themeOf(2));
    Watcher watcher({ folder() + QLatin1String("/t") });
    QVERIFY(watcher.waitForReports(1));
    QDir root(folder());
    QVERIFY(root.rename(QStringLiteral("t"), QStringLiteral("old")));
    QVERIFY(root.rename(QStringLiteral("new"), QStringLiteral("t")));
    QTRY_COMPARE_WITH_TIMEOUT(watcher.told().last().serial, 2, lostMilliseconds);
    put(folder() + QLatin1String("/t/a.thm"), themeOf(3));
    QTRY_COMPARE_WITH_TIMEOUT(watcher.told().last().serial, 3, lostMilliseconds);
}

TAVOLINS_TEST_MAIN(tst_CheckWatch)
#include "tst_checkwatch.moc"
