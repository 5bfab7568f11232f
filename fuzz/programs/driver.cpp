#include "fuzz/programs/driver.h"

#include "fuzz/programs/writer.h"

#include <QtCore/QDir>
#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QRandomGenerator>
#include <QtCore/QRegularExpression>

#include <algorithm>
#include <cstdio>

#include <unistd.h>

namespace {

const int batchSize = 25;
const int timeLimit = 300'000;
const int shrinkingTime = 120'000;
const int shownLines = 60;
const quint32 seedRange = 1'000'000'000;

/// What a process died of, with the first function that the report names.
QString crash(const QString &output)
{
    if (output.contains(QLatin1String("LeakSanitizer")))
        return QStringLiteral("leak");
    static const QRegularExpression frame(QStringLiteral("#\\d+ \\w+ in ([\\w:~]+)"));
    const QRegularExpressionMatch match = frame.match(output);
    return match.hasMatch() ? QStringLiteral("crash in ") + match.captured(1)
                            : QStringLiteral("crash");
}

} // namespace

void prepareEnvironment(char *argv[])
{
    const struct
    {
        const char *name;
        const char *value;
    } variables[] = {
        { "QT_QPA_PLATFORM", "offscreen" },
        { "QT_QUICK_BACKEND", "software" },
        { "QT_QUICK_CONTROLS_STYLE", QT_VERSION_MAJOR == 5 ? "Default" : "Basic" },
        { "QT_HASH_SEED", "0" },
        { "XDG_RUNTIME_DIR", TAVOLINS_RUNTIME_FOLDER },
        { "LC_ALL", "C.UTF-8" },
        { "MALLOC_PERTURB_", "165" },
        // What is kept in the caches of threads would not be overwritten.
        { "GLIBC_TUNABLES", "glibc.malloc.tcache_count=0" },
        { "ASAN_OPTIONS", "max_free_fill_size=4096:free_fill_byte=165" },
        { "UBSAN_OPTIONS", "print_stacktrace=1" },
        { "LSAN_OPTIONS",
          "suppressions=" TAVOLINS_SOURCE_DIR "/tests/support/lsan.supp:print_suppressions=0" },
    };
    bool isComplete = true;
    for (const auto &variable : variables) {
        if (qEnvironmentVariableIsSet(variable.name))
            continue;
        qputenv(variable.name, variable.value);
        isComplete = false;
    }
    // Allocators and sanitizers have read their options already.
    if (!isComplete)
        execv("/proc/self/exe", argv);
}

quint64 anySeed()
{
    return QRandomGenerator::system()->bounded(seedRange);
}

Driver::Driver(const QString &program, const QString &findings, Subject subject)
    : m_program(program)
    , m_findings(findings)
    , m_subject(subject)
{
}

Driver::Outcome Driver::run(quint64 first, int count, const QSet<int> &dropped) const
{
    QStringList parts;
    for (const int part : dropped)
        parts.append(QString::number(part));
    return start({ QStringLiteral("--seed"), QString::number(first), QStringLiteral("--count"),
                   QString::number(count), QStringLiteral("--without"),
                   parts.join(QLatin1Char(',')) });
}

Driver::Outcome Driver::runFile(const QString &path) const
{
    return start({ QStringLiteral("--file"), path });
}

Driver::Outcome Driver::start(QStringList arguments) const
{
    if (m_subject == Subject::StandIn)
        arguments.append(QStringLiteral("--stand-in"));
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(m_program, arguments);
    const bool ended = process.waitForFinished(timeLimit);
    if (!ended) {
        process.kill();
        process.waitForFinished();
    }

    Outcome outcome;
    outcome.output = QString::fromLocal8Bit(process.readAll());
    QString problem;
    const QStringList lines = outcome.output.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (line.startsWith(QLatin1String("seed "))) {
            outcome.lastSeed = line.section(QLatin1Char(' '), 1, 1).toULongLong();
            ++outcome.started;
            problem.clear();
        } else if (problem.isEmpty()) {
            problem = line.left(line.indexOf(QLatin1Char(':')));
        }
    }
    if (!ended)
        outcome.failure = QStringLiteral("hang");
    else if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == problemsFound)
        outcome.failure = problem;
    else if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
        outcome.failure = crash(outcome.output);
    return outcome;
}

bool Driver::fuzz(quint64 first, int seconds, bool keepsGoing) const
{
    std::printf("programs from seed %llu on\n", static_cast<unsigned long long>(first));
    std::fflush(stdout);
    QElapsedTimer time;
    time.start();
    int runs = 0;
    int findings = 0;
    quint64 seed = first;
    while (time.elapsed() < qint64(seconds) * 1000 && (keepsGoing || findings == 0)) {
        const Outcome outcome = run(seed, batchSize, QSet<int>());
        runs += outcome.started;
        if (outcome.failure.isEmpty()) {
            seed += batchSize;
            continue;
        }
        ++findings;
        const Outcome alone = run(outcome.lastSeed, 1, QSet<int>());
        if (alone.failure.isEmpty()) {
            std::printf("FAILED (%s), but not alone; repeat with --seed %llu --count %d\n%s\n",
                        qPrintable(outcome.failure), static_cast<unsigned long long>(seed),
                        outcome.started, qPrintable(outcome.output));
        } else {
            report(outcome.lastSeed, alone);
        }
        seed = outcome.lastSeed + 1;
    }
    std::printf("%-10s %9d runs, seeds %llu to %llu: %s\n", "programs", runs,
                static_cast<unsigned long long>(first), static_cast<unsigned long long>(seed - 1),
                findings == 0 ? "no finding" : "FINDING");
    return findings == 0;
}

bool Driver::shrink(quint64 seed) const
{
    const Outcome outcome = run(seed, 1, QSet<int>());
    if (!outcome.failure.isEmpty())
        report(seed, outcome);
    return !outcome.failure.isEmpty();
}

/// The parts of the program without which it fails as before: first many at a time, then one by
/// one.
QSet<int> Driver::needless(quint64 seed, const QString &failure) const
{
    QElapsedTimer time;
    time.start();
    QSet<int> dropped;
    const int parts = ProgramWriter(seed).partCount();
    for (int size = parts / 2; size > 0; size /= 2) {
        for (int begin = 0; begin < parts && time.elapsed() < shrinkingTime; begin += size) {
            QSet<int> candidate = dropped;
            for (int part = begin; part < std::min(begin + size, parts); ++part)
                candidate.insert(part);
            const bool isSmaller = ProgramWriter(seed, candidate).text()
                    != ProgramWriter(seed, dropped).text();
            if (isSmaller && run(seed, 1, candidate).failure == failure)
                dropped = candidate;
        }
    }
    return dropped;
}

void Driver::report(quint64 seed, const Outcome &outcome) const
{
    const QSet<int> dropped = needless(seed, outcome.failure);
    const QByteArray text = ProgramWriter(seed, dropped).text();
    const QStringList lines = run(seed, 1, dropped).output.split(QLatin1Char('\n'));
    const QString path = QDir(m_findings).filePath(QStringLiteral("programs-%1.qml").arg(seed));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        std::printf("can't write %s\n", qPrintable(path));
    std::printf("FAILED (%s): seed %llu. What is left of its program (repeat with --file %s):\n\n"
                "%s\n%s\n\n",
                qPrintable(outcome.failure), static_cast<unsigned long long>(seed),
                qPrintable(path), text.constData(),
                qPrintable(lines.mid(0, shownLines).join(QLatin1Char('\n'))));
    std::fflush(stdout);
}
