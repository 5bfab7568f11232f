// Loads one theme file, or a folder of them, made up of a given number of parts; for measuring what
// it costs. See tst_linear.
//
//   loadonce KIND SIZE
//
// Writes the input to a temporary folder, loads it and prints how many classes, styles or themes it
// gave and the most memory that was in use, in KiB.

#include "manager/thememanager.h"
#include "support/themevalues.h"
#include "theme/theme.h"
#include "theme/themeprivate.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtGui/QGuiApplication>

#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

namespace {

QByteArray number(int value)
{
    return QByteArray::number(value);
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("can't write %s", qPrintable(path));
}

int loadDocument(const QString &folder, const QByteArray &document)
{
    const QString path = folder + QLatin1String("/input.thm");
    write(path, document);
    Theme theme;
    if (theme.load(path) != 0)
        qFatal("can't load %s", qPrintable(path));
    // Switching copies everything once more.
    ThemeManager::getInstance()->setCurrent(&theme);
    return theme.title().isEmpty() ? -1 : dataOf(*Theme::global())->classScopes.size();
}

int loadText(const QString &folder, int size)
{
    return loadDocument(folder,
                        R"({"title": "Text", "note": {"text": ")" + QByteArray(size, 'x')
                                + R"("}, "global": {"radius": 1}})");
}

int loadTitle(const QString &folder, int size)
{
    return loadDocument(folder, R"({"title": ")" + QByteArray(size, 'x') + R"("})");
}

int loadClasses(const QString &folder, int count)
{
    QByteArray document = R"({"title": "Classes")";
    for (int i = 0; i < count; ++i)
        document += ", \"class" + number(i) + R"(": {"colors": {"foreground": "red"}})";
    return loadDocument(folder, document + '}');
}

/// Several members of that depth: a single one is too small to be told from what starting costs.
int loadNested(const QString &folder, int depth)
{
    QByteArray document = R"({"title": "Nested")";
    for (int member = 0; member < 16; ++member) {
        document += ", \"note" + number(member) + R"(": )";
        for (int i = 0; i < depth; ++i)
            document += R"({"x": )";
        document += '1' + QByteArray(depth, '}');
    }
    return loadDocument(folder, document + '}');
}

int loadStyles(const QString &folder, int count)
{
    const QString styles = folder + QLatin1String("/styles/");
    QDir().mkpath(styles);
    for (int i = 0; i < count; ++i)
        write(styles + QStringLiteral("Style%1.qml").arg(i), QByteArray());
    loadDocument(folder, R"({"title": "Styles"})");
    return dataOf(*Theme::global())->styles.size();
}

int loadThemes(const QString &folder, int count)
{
    for (int i = 0; i < count; ++i)
        write(folder + QStringLiteral("/%1.thm").arg(i), "{\"title\": \"T" + number(i) + "\"}");
    ThemeManager::getInstance()->loadThemes(folder, QStringLiteral("T0"));
    return ThemeManager::getInstance()->rowCount();
}

/// An item that has many class names, of which the last one counts.
int loadNames(const QString &folder, int count)
{
    loadDocument(folder, R"({"title": "Names", "last": {"radius": 1}})");
    QString names;
    for (int i = 0; i < count; ++i)
        names += QStringLiteral("none%1 ").arg(i);
    QObject item;
    Theme *theme = Theme::qmlAttachedProperties(&item);
    theme->setClassnames(names + QLatin1String("last"));
    theme->getStyle(QStringLiteral("Button"), names);
    return theme->getClassValue(QStringLiteral("radius"), 0).toInt();
}

std::vector<std::unique_ptr<QObject>> itemsWithClass(int count, const QString &classname)
{
    std::vector<std::unique_ptr<QObject>> items;
    for (int i = 0; i < count; ++i) {
        items.push_back(std::make_unique<QObject>());
        Theme::qmlAttachedProperties(items.back().get())->setClassnames(classname);
    }
    return items;
}

/// Reads an unchanged file again whose class scope has as many members as there are items with it.
int reloadScope(const QString &folder, int count)
{
    QByteArray document = R"({"title": "Scope", "card": {"radius": 1)";
    for (int i = 0; i < count; ++i)
        document += ", \"member" + number(i) + R"(": [1, 2, 3])";
    const QString path = folder + QLatin1String("/input.thm");
    write(path, document + "}}");
    auto *theme = new Theme(ThemeManager::getInstance());
    theme->load(path);
    ThemeManager::getInstance()->setCurrent(theme);
    const auto items = itemsWithClass(count, QStringLiteral("card"));
    for (int i = 0; i < 5; ++i)
        theme->reload();
    return int(items.size());
}

/// Deletes themes with a class that native code has asked for.
int deleteThemes(const QString &folder, int count)
{
    loadDocument(folder, R"({"title": "Card", "card": {"radius": 1}})");
    std::vector<std::unique_ptr<Theme>> themes;
    for (int i = 0; i < count; ++i) {
        themes.emplace_back(Theme::getObjectTheme(nullptr));
        themes.back()->setClassnames(QStringLiteral("card"));
        themes.back()->sendUpdate();
    }
    themes.clear();
    return count;
}

/// Switches many times without an event loop, and leaves what that replaces to the end of the
/// process.
int endWithoutLoop(const QString &folder, int count)
{
    for (int i = 0; i < 2; ++i) {
        write(folder + QStringLiteral("/%1.thm").arg(i),
              "{\"title\": \"T" + number(i) + R"(", "card": {"radius": 1}})");
    }
    ThemeManager *manager = ThemeManager::getInstance();
    manager->loadThemes(folder, QStringLiteral("T0"));
    const auto items = itemsWithClass(count, QStringLiteral("card"));
    for (int i = 0; i < 60; ++i)
        manager->setCurrentIndex((i + 1) % 2);
    return int(items.size());
}

const struct
{
    const char *kind;
    int (*load)(const QString &folder, int size);
} kinds[] = {
    { "text", loadText },      { "title", loadTitle },    { "classes", loadClasses },
    { "nested", loadNested },  { "styles", loadStyles },  { "themes", loadThemes },
    { "names", loadNames },    { "reload", reloadScope }, { "delete", deleteThemes },
    { "end", endWithoutLoop },
};

} // namespace

int main(int argc, char *argv[])
{
    qputenv("QT_HASH_SEED", "0");
    const QGuiApplication application(argc, argv);
    // The first theme becomes the global one, which is to be the catalogue's own.
    ThemeManager::getInstance();
    const QTemporaryDir folder;
    for (const auto &entry : kinds) {
        if (argc == 3 && std::strcmp(argv[1], entry.kind) == 0) {
            std::printf("%d ", entry.load(folder.path(), std::atoi(argv[2])));
            rusage usage;
            getrusage(RUSAGE_SELF, &usage);
            std::printf("%ld\n", usage.ru_maxrss);
            std::fflush(stdout);
            // The application object stays, as in a process that a handler ends.
            std::exit(0);
        }
    }
    return 1;
}
