#include "support/programrun.h"

#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>

QStringList words(const char *line)
{
    return QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

bool hasTerminals(QString *why)
{
    const QString script = QStandardPaths::findExecutable(QStringLiteral("script"));
    if (script.isEmpty()) {
        *why = QStringLiteral("script, which makes a terminal, is not installed");
        return false;
    }
    const ProgramRun trial = runProgram(
            script,
            { QStringLiteral("-qec"), QStringLiteral("test -t 1"), QStringLiteral("/dev/null") },
            QStringLiteral("/"));
    if (trial.exitCode != 0)
        *why = QStringLiteral("no terminal can be made here: ") + trial.errors.trimmed();
    return trial.exitCode == 0;
}

ProgramRun runProgram(const QString &program, const QStringList &arguments, const QString &folder)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : { "DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "QT_QUICK_BACKEND",
                              "XDG_RUNTIME_DIR", "QML2_IMPORT_PATH", "LD_LIBRARY_PATH" })
        environment.remove(QLatin1String(name));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder);
    process.start(program, arguments);
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
        return { -1, QString(), process.errorString() };
    return { process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
             QString::fromUtf8(process.readAllStandardError()) };
}
