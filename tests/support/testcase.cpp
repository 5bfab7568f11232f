#include "support/testcase.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QEvent>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtGui/QGuiApplication>
#include <QtTest/QtTest>

namespace {

/// Installed on the application, sees each deletion that is carried out.
class DeletionCounter : public QObject
{
public:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::DeferredDelete)
            ++count;
        return false;
    }

    int count = 0;
};

} // namespace

void TestCase::expectOpenFailure(int count)
{
    expectLog(QStringLiteral("Couldn't open file."), count);
}

void TestCase::expectLog(const QString &message, int count)
{
    m_log->expect(message, count);
}

QString TestCase::folder() const
{
    return m_folder->path();
}

QString TestCase::write(const QString &name, const QByteArray &content)
{
    QString path = folder() + QLatin1Char('/') + name;
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("can't write %s", qPrintable(path));
    return path;
}

void TestCase::deleteDeferred()
{
    // Destructors may put off further deletions, which Qt leaves for the next round.
    DeletionCounter counter;
    QCoreApplication::instance()->installEventFilter(&counter);
    do {
        counter.count = 0;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    } while (counter.count > 0);
}

void TestCase::init()
{
    m_workingFolder = QDir::currentPath();
    m_folder.reset(new QTemporaryDir);
    QVERIFY(m_folder->isValid());
    m_log.reset(new LogWatch);
}

void TestCase::cleanup()
{
    deleteDeferred();
    const QStringList problems = m_log->takeProblems();
    m_log.reset();
    m_folder.reset();
    QDir::setCurrent(m_workingFolder);
    QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char('\n'))));
}

int runTests(QObject *(*create)(), int argc, char *argv[])
{
    // Fixed before Qt reads it: the same file system encoding and hash order on every machine.
    qputenv("QT_HASH_SEED", "0");
    const QGuiApplication application(argc, argv);
    const std::unique_ptr<QObject> test(create());
    return QTest::qExec(test.get(), argc, argv);
}
