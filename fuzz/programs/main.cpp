#include "fuzz/programs/driver.h"
#include "fuzz/programs/programrun.h"
#include "fuzz/programs/writer.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QFile>
#include <QtGui/QGuiApplication>

#include <cstdio>

namespace {

const char *const description =
        "Runs random QML programs that use the plugin, each batch in a process of its own.";

QSet<int> numbers(const QString &list)
{
    QSet<int> set;
    const QStringList words = list.split(QLatin1Char(','), Qt::SkipEmptyParts);
    for (const QString &word : words)
        set.insert(word.toInt());
    return set;
}

int tell(const QStringList &problems)
{
    for (const QString &problem : problems)
        std::printf("%s\n", qPrintable(problem));
    return problems.isEmpty() ? 0 : problemsFound;
}

/// Runs \a count programs from the seed \a first on, until one fails.
int runBatch(quint64 first, int count, const QSet<int> &dropped, Subject subject)
{
    for (quint64 seed = first; seed < first + quint64(count); ++seed) {
        std::printf("seed %llu\n", static_cast<unsigned long long>(seed));
        std::fflush(stdout);
        const int status = tell(runProgram(ProgramWriter(seed, dropped).text(), subject));
        if (status != 0)
            return status;
    }
    return 0;
}

int runFile(const QString &path, Subject subject)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "can't read %s\n", qPrintable(path));
        return 1;
    }
    return tell(runProgram(file.readAll(), subject));
}

} // namespace

int main(int argc, char *argv[])
{
    prepareEnvironment(argv);
    const QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QLatin1String(description));
    parser.addHelpOption();
    parser.addOptions({
            { QStringLiteral("seconds"), QStringLiteral("Fuzz for N seconds."),
              QStringLiteral("N") },
            { QStringLiteral("keep-going"), QStringLiteral("Fuzz on after a finding.") },
            { QStringLiteral("findings"), QStringLiteral("Write failing programs to FOLDER."),
              QStringLiteral("FOLDER"), QStringLiteral(".") },
            { QStringLiteral("seed"),
              QStringLiteral("Run the program of SEED; with --seconds the first one."),
              QStringLiteral("SEED") },
            { QStringLiteral("count"), QStringLiteral("Run N programs from --seed on."),
              QStringLiteral("N"), QStringLiteral("1") },
            { QStringLiteral("without"), QStringLiteral("Leave out these parts of the program."),
              QStringLiteral("PARTS") },
            { QStringLiteral("shrink"),
              QStringLiteral("Drop all parts that the failure of --seed "
                             "does not need.") },
            { QStringLiteral("print"), QStringLiteral("Print the program instead.") },
            { QStringLiteral("file"), QStringLiteral("Run the program in FILE."),
              QStringLiteral("FILE") },
            { QStringLiteral("stand-in"),
              QStringLiteral("Run with plain attached types in the place of the plugin's.") },
    });
    parser.process(application);
    const Subject subject = parser.isSet(QStringLiteral("stand-in")) ? Subject::StandIn
                                                                     : Subject::Plugin;
    if (parser.isSet(QStringLiteral("file")))
        return runFile(parser.value(QStringLiteral("file")), subject);

    const quint64 seed = parser.isSet(QStringLiteral("seed"))
            ? parser.value(QStringLiteral("seed")).toULongLong()
            : anySeed();
    const QSet<int> dropped = numbers(parser.value(QStringLiteral("without")));
    if (parser.isSet(QStringLiteral("print"))) {
        std::printf("%s", ProgramWriter(seed, dropped).text().constData());
        return 0;
    }
    const Driver driver(QCoreApplication::applicationFilePath(),
                        parser.value(QStringLiteral("findings")), subject);
    if (parser.isSet(QStringLiteral("shrink")))
        return driver.shrink(seed) ? 1 : 0;
    if (parser.isSet(QStringLiteral("seconds"))) {
        return driver.fuzz(seed, parser.value(QStringLiteral("seconds")).toInt(),
                           parser.isSet(QStringLiteral("keep-going")))
                ? 0
                : 1;
    }
    return runBatch(seed, parser.value(QStringLiteral("count")).toInt(), dropped, subject);
}
