// qmlrun <import path> <file>: runs a QML file with one import path added; ends with the exit code
// the file asks for by Qt.exit(), with 3 when it can't be loaded.

#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    // For files that store settings.
    QCoreApplication::setOrganizationName(QStringLiteral("tavolins"));
    const QStringList arguments = application.arguments();
    if (arguments.size() != 3)
        return 3;
    QQmlApplicationEngine engine;
    engine.addImportPath(arguments.at(1));
    engine.load(QUrl::fromLocalFile(arguments.at(2)));
    if (engine.rootObjects().isEmpty())
        return 3;
    return application.exec();
}
