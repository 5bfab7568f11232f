#include "support/logwatch.h"

#include <QtCore/QHash>
#include <QtCore/QMutex>
#include <QtCore/QtGlobal>

namespace {

QMutex mutex;
QHash<QString, int> expected;
QStringList unexpected;
QtMessageHandler previousHandler = nullptr;

void handleMessage(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    // A fatal message ends the process at once; it has to be seen.
    if (type == QtFatalMsg && previousHandler)
        previousHandler(type, context, message);
    const QMutexLocker locker(&mutex);
    auto entry = expected.find(message);
    if (entry != expected.end() && entry.value() > 0)
        --entry.value();
    else
        unexpected.append(message);
}

} // namespace

LogWatch::LogWatch()
{
    previousHandler = qInstallMessageHandler(handleMessage);
}

LogWatch::~LogWatch()
{
    qInstallMessageHandler(previousHandler);
}

void LogWatch::expect(const QString &message, int count)
{
    const QMutexLocker locker(&mutex);
    expected[message] += count;
}

QStringList LogWatch::takeProblems()
{
    const QMutexLocker locker(&mutex);
    QStringList problems;
    for (const QString &message : qAsConst(unexpected))
        problems.append(QStringLiteral("unexpected on the log: ") + message);
    for (auto entry = expected.constBegin(); entry != expected.constEnd(); ++entry) {
        if (entry.value() > 0)
            problems.append(QStringLiteral("missing on the log, %1 times: %2")
                                    .arg(entry.value())
                                    .arg(entry.key()));
    }
    unexpected.clear();
    expected.clear();
    return problems;
}
