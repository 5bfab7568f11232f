// Measures what an application pays for importing a module. Links none of the modules, so that
// loading the library is part of what is measured.

#include "../phase.h"

#include <QtGui/QFont>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>

#include <cstdio>
#include <memory>

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.size() != 4)
        qFatal("Arguments: text or no-text, the import path, the text of a QML document");
    // Every application that shows a text has Qt look the default font up, which takes far longer
    // than the rest, whoever asks first.
    if (arguments.at(1) == QLatin1String("text"))
        QGuiApplication::font();

    Phase startup("startup");
    startup.begin();
    QQmlEngine engine;
    engine.addImportPath(arguments.at(2));
    QQmlComponent component(&engine);
    component.setData(arguments.at(3).toUtf8(), QUrl());
    const std::unique_ptr<QObject> object(component.create());
    startup.end();
    if (!object)
        qFatal("%s", qPrintable(component.errorString()));
    std::printf("{\"startup_ns\":%.0f}\n", startup.finish());
    return 0;
}
