#include "qml/qmltestcase.h"

#include "manager/thememanager.h"
#include "theme/theme.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtQml/QQmlComponent>
#include <QtTest/QtTest>

namespace {

/// The modules' folder. Qt lets a module be registered from one path only in a process, so all
/// tests share it.
const QTemporaryDir &modules()
{
    static const QTemporaryDir folder;
    return folder;
}

} // namespace

void QmlTestCase::addModule(const QString &uri)
{
    const QFileInfo plugin(QFile::decodeName(TAVOLINS_PLUGIN_FILE));
    const QDir module(modules().filePath(QString(uri).replace(QLatin1Char('.'), QLatin1Char('/'))));
    if (module.exists())
        return;
    QVERIFY(module.mkpath(QStringLiteral(".")));
    QFile qmldir(module.filePath(QStringLiteral("qmldir")));
    QVERIFY(qmldir.open(QIODevice::WriteOnly));
    qmldir.write("module " + uri.toUtf8() + "\nplugin tavolins\nclassname TavolinsPlugin\n");
    QVERIFY(QFile::link(plugin.filePath(), module.filePath(plugin.fileName())));
}

std::unique_ptr<QQmlEngine> QmlTestCase::newEngine()
{
    std::unique_ptr<QQmlEngine> engine(new QQmlEngine);
    engine->addImportPath(modules().path());
    return engine;
}

std::unique_ptr<QObject> QmlTestCase::create(QQmlEngine *engine, const QByteArray &qml)
{
    QQmlComponent component(engine);
    component.setData(qml, QUrl::fromLocalFile(folder() + QLatin1String("/inline.qml")));
    std::unique_ptr<QObject> object;
    if (component.isReady())
        object.reset(component.create());
    if (!object)
        qWarning("%s", qPrintable(component.errorString()));
    return object;
}

QString QmlTestCase::errorsOf(QQmlEngine *engine, const QByteArray &qml)
{
    QQmlComponent component(engine);
    component.setData(qml, QUrl::fromLocalFile(folder() + QLatin1String("/inline.qml")));
    if (component.isReady())
        const std::unique_ptr<QObject> object(component.create());
    QStringList errors;
    const auto list = component.errors();
    for (const QQmlError &error : list)
        errors.append(error.description());
    return errors.join(QLatin1Char('\n'));
}

Theme *QmlTestCase::makeCurrent(const QString &name, const QByteArray &text)
{
    ThemeManager *manager = ThemeManager::getInstance();
    auto *theme = new Theme(manager);
    if (theme->load(write(name, text)) != 0)
        qFatal("can't load %s", qPrintable(name));
    manager->addTheme(theme);
    manager->setCurrent(theme);
    return theme;
}

void QmlTestCase::park()
{
    ThemeManager *manager = ThemeManager::getInstance();
    manager->setCurrent(new Theme(manager));
}
