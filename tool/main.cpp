#include "checker/runtimefolder.h"
#include "tool/subcommands.h"
#include "tool/terminal.h"

#include <QtGui/QGuiApplication>

int main(int argc, char *argv[])
{
    Terminal::occupyStandardStreams();
    // Fonts are asked for, but nothing is ever shown.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Styles are compiled as they are now, and nothing is written beside the report.
    qputenv("QML_DISABLE_DISK_CACHE", "1");
    ensureRuntimeFolder();
    const QGuiApplication application(argc, argv);
    return runTool(QCoreApplication::arguments());
}
