// An application with controls, for what can't be shown from within a test: how it names its style,
// and in which order it ends. Usage:
//
//   controlsapp <step>... [<option of Qt>...]
//
//   app              makes the application
//   engine           makes the engine
//   import:<folder>  has the engine find modules in the folder
//   style:<name>     chooses the style
//   path:<folder>    has Qt find styles in the folder
//   load:<file>      has the engine load QML, which belongs to it
//   create:<file>    makes an object, which belongs to the application
//   view:<file>      shows an item in a view, which belongs to the application
//   tell             prints which file drew the background of the last object
//   run              processes events for a moment
//   exit             leaves from within a handler of an event
//   delete           deletes the engine
//
// What is left at the end is deleted in the usual order: views and objects, engine, application.

#include <QtCore/QFile>
#include <QtCore/QTimer>
#include <QtCore/QUrl>
#include <QtGui/QGuiApplication>
#include <QtQml/QQmlApplicationEngine>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/qqml.h>
#include <QtQuick/QQuickView>
#include <QtQuickControls2/QQuickStyle>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

class Program
{
public:
    Program(int &argc, char **argv)
        : m_argc(argc)
        , m_argv(argv)
    {
    }

    void take(const QString &step)
    {
        const QString kind = step.section(QLatin1Char(':'), 0, 0);
        const QString value = step.section(QLatin1Char(':'), 1);
        if (kind == QLatin1String("app"))
            m_application.reset(new QGuiApplication(m_argc, m_argv));
        else if (kind == QLatin1String("engine"))
            m_engine.reset(new QQmlApplicationEngine);
        else if (kind == QLatin1String("import"))
            m_engine->addImportPath(value);
        else if (kind == QLatin1String("style"))
            QQuickStyle::setStyle(value);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
        else if (kind == QLatin1String("path"))
            QQuickStyle::addStylePath(value);
#endif
        else if (kind == QLatin1String("load"))
            m_engine->load(QUrl::fromLocalFile(value));
        else if (kind == QLatin1String("create"))
            create(value);
        else if (kind == QLatin1String("view"))
            view(value);
        else if (kind == QLatin1String("tell"))
            tell();
        else if (kind == QLatin1String("run"))
            run(&QCoreApplication::quit);
        else if (kind == QLatin1String("exit"))
            run([]() { std::exit(0); });
        else if (kind == QLatin1String("delete"))
            m_engine.reset();
        else
            qFatal("what is %s?", qPrintable(step));
    }

private:
    void create(const QString &file)
    {
        QQmlComponent component(m_engine.get(), QUrl::fromLocalFile(file));
        m_objects.emplace_back(component.create());
        if (!m_objects.back())
            qFatal("%s", qPrintable(component.errorString()));
    }

    void view(const QString &file)
    {
        std::unique_ptr<QQuickView> view(new QQuickView(m_engine.get(), nullptr));
        view->setSource(QUrl::fromLocalFile(file));
        view->show();
        m_objects.push_back(std::move(view));
    }

    void tell() const
    {
        const auto *background = m_objects.back()->property("background").value<QObject *>();
        std::puts(qPrintable(qmlContext(background)->baseUrl().toLocalFile()));
    }

    template <typename Function>
    void run(Function atItsEnd)
    {
        QTimer::singleShot(200, m_application.get(), atItsEnd);
        QCoreApplication::exec();
    }

    int &m_argc;
    char **m_argv;
    std::unique_ptr<QGuiApplication> m_application;
    std::unique_ptr<QQmlApplicationEngine> m_engine;
    std::vector<std::unique_ptr<QObject>> m_objects;
};

} // namespace

int main(int argc, char **argv)
{
    QStringList steps;
    for (int i = 1; i < argc && argv[i][0] != '-'; ++i)
        steps.append(QFile::decodeName(argv[i]));
    Program program(argc, argv);
    for (const QString &step : qAsConst(steps))
        program.take(step);
    return 0;
}
