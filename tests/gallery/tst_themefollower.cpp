// Noticing that a file was saved, whatever way an editor saves it.

#include "gallery/themefollower.h"
#include "support/testcase.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QtTest>

class tst_ThemeFollower : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void noticesEachSave_data();
    void noticesEachSave();
    void manySavesAreOne();
    void keepsQuietWithoutSaves();
    void followsOnlyTheLastPath();
    void nothingToFollow_data();
    void nothingToFollow();

private:
    void save(const QString &way, const QByteArray &content);
};

void tst_ThemeFollower::save(const QString &way, const QByteArray &content)
{
    const QString name = QStringLiteral("a.thm");
    const QString path = folder() + QLatin1Char('/') + name;
    if (way == QLatin1String("in place")) {
        write(name, content);
    } else if (way == QLatin1String("rename over")) {
        // QFile::rename() does not replace files.
        const QString other = write(QStringLiteral("a.thm.new"), content);
        QCOMPARE(
                ::rename(QFile::encodeName(other).constData(), QFile::encodeName(path).constData()),
                0);
    } else if (way == QLatin1String("move to a backup and create")) {
        QFile::remove(path + QLatin1Char('~'));
        QVERIFY(QFile::rename(path, path + QLatin1Char('~')));
        write(name, content);
    } else {
        QVERIFY(QFile::remove(path));
        QTest::qWait(300);
        write(name, content);
    }
}

void tst_ThemeFollower::noticesEachSave_data()
{
    QTest::addColumn<QString>("way");
    for (const char *way :
         { "in place", "rename over", "move to a backup and create", "delete and create" })
        QTest::newRow(way) << QString::fromLatin1(way);
}

void tst_ThemeFollower::noticesEachSave()
{
    QFETCH(QString, way);
    const QString path = write(QStringLiteral("a.thm"), "first");
    ThemeFollower follower;
    follower.follow(path);
    QByteArray seen;
    connect(&follower, &ThemeFollower::saved, this, [&seen, path] {
        QFile file(path);
        if (file.open(QIODevice::ReadOnly))
            seen = file.readAll();
    });
    // More than once: watches that end with the first save are what this class is for.
    for (const char *content : { "second", "third", "fourth" }) {
        save(way, content);
        QTRY_COMPARE(seen, QByteArray(content));
    }
}

void tst_ThemeFollower::manySavesAreOne()
{
    const QString path = write(QStringLiteral("a.thm"), "first");
    ThemeFollower follower;
    follower.follow(path);
    QSignalSpy saved(&follower, &ThemeFollower::saved);
    for (int i = 0; i < 10; ++i)
        write(QStringLiteral("a.thm"), QByteArray::number(i));
    QTRY_COMPARE(saved.count(), 1);
    QTest::qWait(250);
    QCOMPARE(saved.count(), 1);
}

void tst_ThemeFollower::keepsQuietWithoutSaves()
{
    ThemeFollower follower;
    follower.follow(write(QStringLiteral("a.thm"), "first"));
    QSignalSpy saved(&follower, &ThemeFollower::saved);
    QTest::qWait(250);
    QCOMPARE(saved.count(), 0);
}

void tst_ThemeFollower::followsOnlyTheLastPath()
{
    ThemeFollower follower;
    follower.follow(write(QStringLiteral("one/a.thm"), "first"));
    follower.follow(write(QStringLiteral("two/a.thm"), "first"));
    QSignalSpy saved(&follower, &ThemeFollower::saved);
    write(QStringLiteral("one/a.thm"), "second");
    QTest::qWait(250);
    QCOMPARE(saved.count(), 0);
    write(QStringLiteral("two/a.thm"), "second");
    QTRY_COMPARE(saved.count(), 1);
}

void tst_ThemeFollower::nothingToFollow_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("no path") << QString();
    QTest::newRow("a resource") << QStringLiteral(":/themes/a.thm");
    QTest::newRow("a folder that is missing") << QStringLiteral("/nowhere/at/all/a.thm");
}

void tst_ThemeFollower::nothingToFollow()
{
    // The check is the log: the watcher complains of paths that it can't take.
    QFETCH(QString, path);
    ThemeFollower follower;
    QSignalSpy saved(&follower, &ThemeFollower::saved);
    follower.follow(path);
    QTest::qWait(150);
    QCOMPARE(saved.count(), 0);
}

TAVOLINS_TEST_MAIN(tst_ThemeFollower)
#include "tst_themefollower.moc"
