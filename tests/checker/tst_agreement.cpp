// What the checker says of random folders against what the plugin makes of them.

#include "checker/checker.h"
#include "checker/loadorder.h"
#include "checker/scratchtheme.h"
#include "manager/thememanager.h"
#include "support/objectcount.h"
#include "support/testcase.h"
#include "support/themetext.h"
#include "support/themevalues.h"
#include "theme/theme.h"

#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QMetaProperty>
#include <QtTest/QtTest>

#include <cstdio>
#include <fstream>
#include <random>

class tst_Agreement : public TestCase
{
    Q_OBJECT

private Q_SLOTS:
    void droppedThemes();
    void namesThatAreNotUtf8();
    void renameThatIsToldMends();
    void valuesOfScratchThemes();
    void leavesNothingBehind();

private:
    int below(int limit) { return int(m_random() % unsigned(limit)); }
    QByteArray randomTheme(const QString &prefix);
    QStringList writeFolder(const QString &name, const QString &prefix);

    std::mt19937 m_random{ 7 };
};

namespace {

const QSet<Code> droppingCodes = { Code::UnreadableFile, Code::EmptyFile,   Code::UnknownParent,
                                   Code::ExtendsItself,  Code::ExtendsRing, Code::ParentTooLate,
                                   Code::ParentLeftOut };

/// The names of the files that the application's catalogue has taken since it had \a rowsBefore.
QStringList catalogued(int rowsBefore)
{
    const ThemeManager *manager = ThemeManager::getInstance();
    QStringList names;
    for (int row = rowsBefore; row < manager->rowCount(); ++row) {
        const QVariant pointer = manager->data(manager->index(row), Qt::UserRole + 1);
        const auto *theme = qobject_cast<Theme *>(pointer.value<QObject *>());
        names.append(QFileInfo(theme->filename()).fileName());
    }
    return names;
}

/// The files that the checker says are left out.
QStringList toldAsDropped(const CheckReport &report)
{
    QStringList names;
    for (const Problem &problem : report.problems) {
        if (droppingCodes.contains(problem.code))
            names.append(QFileInfo(problem.file).fileName());
    }
    return names;
}

QString difference(const QObject *one, const QObject *other)
{
    const QMetaObject *type = one->metaObject();
    for (int i = QObject::staticMetaObject.propertyCount(); i < type->propertyCount(); ++i) {
        if (type->property(i).read(one) != type->property(i).read(other))
            return QString::fromLatin1(type->property(i).name());
    }
    return QString();
}

} // namespace

QByteArray tst_Agreement::randomTheme(const QString &prefix)
{
    static const char *const titles[] = { "A", "B", "C", "D", "E", "F", "a", "" };
    const auto title = [&] {
        const QString text = QString::fromLatin1(titles[below(8)]);
        return text.isEmpty() ? text : prefix + text;
    };
    switch (below(20)) {
    case 0:
        return QByteArray();
    case 1:
        return "{ \"title\": \"" + title().toUtf8() + "\", }";
    case 2:
        return "[]";
    default:
        break;
    }
    QJsonObject document;
    document.insert(QStringLiteral("title"), title());
    if (below(4))
        document.insert(QStringLiteral("extends"), title());
    if (below(3) == 0) {
        QJsonObject colors{ { QStringLiteral("foreground"), QColor::colorNames().at(below(100)) } };
        if (below(2))
            colors.insert(QStringLiteral("lighterBackground"), QStringLiteral("#80102030"));
        const QJsonObject fonts{
            { below(2) ? QStringLiteral("main") : QStringLiteral("h2"),
              QJsonObject{ { QStringLiteral("pointSize"), below(40) - 2 },
                           { QStringLiteral("weight"), QStringLiteral("Bold") } } }
        };
        document.insert(QStringLiteral("global"),
                        QJsonObject{ { QStringLiteral("radius"), below(12) - 2 },
                                     { QStringLiteral("colors"), colors },
                                     { QStringLiteral("fonts"), fonts } });
    }
    static const char *const classes[] = { "header", "card", "big card", "extend" };
    if (below(2)) {
        document.insert(QString::fromLatin1(classes[below(4)]),
                        below(3) ? QJsonValue(QJsonObject{ { QStringLiteral("x"), below(9) } })
                                 : QJsonValue(QJsonObject()));
    }
    return QJsonDocument(document).toJson();
}

QStringList tst_Agreement::writeFolder(const QString &name, const QString &prefix)
{
    static const char *const names[] = { "a.thm",   "b.thm", "B.thm", "c.THM", "d.thm",
                                         "e_a.thm", "e.thm", "ä.thm", ".f.thm" };
    QDir(folder() + QLatin1Char('/') + name).removeRecursively();
    QStringList written;
    for (const char *file : names) {
        if (below(4) == 0)
            continue;
        write(name + QLatin1Char('/') + QString::fromUtf8(file), randomTheme(prefix));
        written.append(QString::fromUtf8(file));
    }
    QDir(folder()).mkpath(name);
    return written;
}

void tst_Agreement::droppedThemes()
{
    ThemeManager *manager = ThemeManager::getInstance();
    int dropped = 0;
    int loaded = 0;
    for (int round = 0; round < 400; ++round) {
        const QString prefix = QString::number(round) + QLatin1Char('-');
        writeFolder(QStringLiteral("one"), prefix);
        const bool hasSecond = below(3) == 0;
        QStringList paths{ folder() + QLatin1String("/one") };
        if (hasSecond) {
            writeFolder(QStringLiteral("two"), prefix);
            paths.append(folder() + QLatin1String("/two"));
        }
        QStringList expected;
        for (const QString &path : qAsConst(paths)) {
            const int rows = manager->rowCount();
            manager->loadThemes(path);
            const QStringList taken = catalogued(rows);
            loaded += int(taken.size());
            const QStringList files = LoadOrder::themeFiles(path);
            for (const QString &name : files) {
                if (!taken.contains(name))
                    expected.append(name);
            }
        }
        CheckReport report = checkThemes(paths);
        QCOMPARE(toldAsDropped(report), expected);
        dropped += int(expected.size());
    }
    QVERIFY2(dropped > 300 && loaded > 300,
             qPrintable(QStringLiteral("%1 dropped, %2 loaded").arg(dropped).arg(loaded)));
}

/// Renames what the checker says is to be renamed, and loads the folder.
/// Qt lists no such file, so neither the catalogue nor a QTemporaryDir that is removed knows of it.
void tst_Agreement::namesThatAreNotUtf8()
{
    write(QStringLiteral("t/a.thm"), R"({ "title": "A" })");
    const std::string path = QFile::encodeName(folder()).toStdString() + "/t/b\xff.thm";
    std::ofstream(path) << R"({ "title": "B" })";
    const int rowsBefore = ThemeManager::getInstance()->rowCount();
    ThemeManager::getInstance()->loadThemes(folder() + QStringLiteral("/t"));
    const CheckReport report = checkThemes({ folder() + QStringLiteral("/t") });
    QCOMPARE(std::remove(path.c_str()), 0);
    QCOMPARE(catalogued(rowsBefore), QStringList(QStringLiteral("a.thm")));
    QCOMPARE(toldAsDropped(report), QStringList(QStringLiteral("b\uFFFD.thm")));
    QCOMPARE(report.problems.size(), 1);
}

void tst_Agreement::renameThatIsToldMends()
{
    const QString path = folder() + QLatin1String("/chain");
    int mended = 0;
    for (int round = 0; round < 200; ++round) {
        const QString prefix = QStringLiteral("r%1-").arg(round);
        QDir(path).removeRecursively();
        writeFolder(QStringLiteral("chain"), prefix);
        write(QStringLiteral("chain/z.thm"), themeText(prefix + QLatin1Char('F'), 1));
        const CheckReport report = checkThemes({ path });
        for (const Problem &problem : report.problems) {
            if (problem.code != Code::ParentTooLate || problem.help.isEmpty())
                continue;
            static const QRegularExpression name(QStringLiteral(", to (.*) for instance$"));
            const QString to = name.match(problem.help.first()).captured(1);
            QVERIFY2(!to.isEmpty(), qPrintable(problem.help.first()));
            QVERIFY(QFile::rename(problem.file, path + QLatin1Char('/') + to));
            QVERIFY2(!toldAsDropped(checkThemes({ path })).contains(to), qPrintable(to));
            const int rows = ThemeManager::getInstance()->rowCount();
            ThemeManager::getInstance()->loadThemes(path);
            QVERIFY2(catalogued(rows).contains(to), qPrintable(to));
            ++mended;
            break;
        }
    }
    QVERIFY2(mended > 10, qPrintable(QString::number(mended)));
}

void tst_Agreement::valuesOfScratchThemes()
{
    ThemeManager *manager = ThemeManager::getInstance();
    for (int round = 0; round < 200; ++round) {
        writeFolder(QStringLiteral("one"), QStringLiteral("v%1-").arg(round));
        write(QStringLiteral("one/styles/Card.qml"), "import QtQml 2.0\nQtObject {}\n");
        const int rows = manager->rowCount();
        manager->loadThemes(folder() + QLatin1String("/one"));
        std::vector<std::unique_ptr<ScratchTheme>> scratches;
        QHash<QString, int> firstOfTitle;
        for (int row = rows; row < manager->rowCount(); ++row) {
            const QVariant pointer = manager->data(manager->index(row), Qt::UserRole + 1);
            const auto *loaded = qobject_cast<Theme *>(pointer.value<QObject *>());
            const Document document = Document::read(loaded->filename());
            const QString extends = document.object().value(QLatin1String("extends")).toString();
            const ScratchTheme *parent = extends.isEmpty()
                    ? nullptr
                    : scratches.at(size_t(firstOfTitle.value(extends))).get();
            scratches.push_back(
                    std::make_unique<ScratchTheme>(loaded->filename(), document.object(), parent));
            if (!firstOfTitle.contains(loaded->title()))
                firstOfTitle.insert(loaded->title(), int(scratches.size()) - 1);
            const Theme &built = scratches.back()->theme();
            QCOMPARE(built.title(), loaded->title());
            QCOMPARE(built.radius(), loaded->radius());
            QCOMPARE(difference(built.colors(), loaded->colors()), QString());
            QCOMPARE(difference(built.fonts(), loaded->fonts()), QString());
            QCOMPARE(dataOf(built)->classScopes, dataOf(*loaded)->classScopes);
            QCOMPARE(dataOf(built)->styles, dataOf(*loaded)->styles);
        }
    }
}

void tst_Agreement::leavesNothingBehind()
{
    const ThemeManager *manager = ThemeManager::getInstance();
    for (int i = 0; i < 20; ++i)
        write(QStringLiteral("one/%1.thm").arg(i),
              themeText(QString::number(i), 4,
                        "\"card\": { \"colors\": { \"foreground\": \"#102030\" } }"));
    checkThemes({ folder() + QLatin1String("/one") });
    deleteDeferred();

    const Theme *global = Theme::global();
    const int rows = manager->rowCount();
    // No event loop comes between the checks, and none is needed.
    const ObjectCount objects;
    for (int i = 0; i < 3; ++i)
        checkThemes({ folder() + QLatin1String("/one") });
    QVERIFY2(objects.value() <= 2, qPrintable(QString::number(objects.value())));
    QCOMPARE(manager->rowCount(), rows);
    QCOMPARE(Theme::global(), global);
}

TAVOLINS_TEST_MAIN(tst_Agreement)
#include "tst_agreement.moc"
