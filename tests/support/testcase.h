#pragma once

#include "support/logwatch.h"

#include <QtCore/QByteArray>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

#include <memory>

/// Base of all tests: each test function gets a new empty folder, fails on any message on Qt's log
/// that it did not expect, and finds working folder and environment as they were.
///
/// A class that has init() or cleanup() of its own calls these first and last.
class TestCase : public QObject
{
    Q_OBJECT

protected:
    /// Announces the one message the plugin writes, \a count times.
    void expectOpenFailure(int count = 1);
    void expectLog(const QString &message, int count = 1);

    /// The test function's folder, without a slash at the end.
    QString folder() const;

    /// Writes \a content to the file \a name (with folders, if need be) in folder(), in place:
    /// an existing file keeps its identity. Returns the absolute path.
    QString write(const QString &name, const QByteArray &content);

    /// Runs what deleteLater() has put off, until nothing is left.
    static void deleteDeferred();

protected Q_SLOTS:
    void init();
    void cleanup();

private:
    std::unique_ptr<LogWatch> m_log;
    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_workingFolder;
};

/// Runs the tests of \a TestClass in a GUI application.
#define TAVOLINS_TEST_MAIN(TestClass) \
    int main(int argc, char *argv[]) \
    { \
        return runTests<TestClass>(argc, argv); \
    }

int runTests(QObject *(*create)(), int argc, char *argv[]);

template <typename TestClass>
int runTests(int argc, char *argv[])
{
    return runTests([]() -> QObject * { return new TestClass; }, argc, argv);
}
