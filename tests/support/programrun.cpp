#include "support/programrun.h"

#include <QtCore/QProcess>

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
