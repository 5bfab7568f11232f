#pragma once

#include "support/testcase.h"

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtQml/QQmlEngine>

#include <memory>

class Theme;

/// Base of the tests that go through a QML engine which imports the built plugin file.
class QmlTestCase : public TestCase
{
    Q_OBJECT

protected:
    /// Makes the built file importable as \a uri, for the engines of newEngine(): a folder with a
    /// qmldir and a link to the file, below a temporary import path.
    void addModule(const QString &uri);

    /// An engine that imports the modules of addModule().
    std::unique_ptr<QQmlEngine> newEngine();

    /// Creates an object from \a qml. Errors go to the log, where they fail the test; null then.
    std::unique_ptr<QObject> create(QQmlEngine *engine, const QByteArray &qml);

    /// The errors that creating an object from \a qml ends with, one a line, without its URL.
    QString errorsOf(QQmlEngine *engine, const QByteArray &qml);

    /// The theme whose file holds \a text, made current in the manager of the process.
    Theme *makeCurrent(const QString &name, const QByteArray &text);

    /// Makes a theme without a file current: those of the test go with the test's folder.
    void park();
};
