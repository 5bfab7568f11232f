#include "loadscenario.h"

#include "filecalls.h"
#include "phase.h"
#include "themefiles.h"

#include "checker/checker.h"
#include "manager/thememanager.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>

namespace {

struct Folder
{
    const char *name;
    void (*write)(const ThemeFiles &files, int count);
};

const Folder knownFolders[] = {
    { "plain", [](const ThemeFiles &files, int count) { files.writeMany(count); } },
    { "clean", [](const ThemeFiles &files, int count) { files.writeClean(count); } },
    { "styles",
      [](const ThemeFiles &files, int count) {
          files.writeMany(count);
          files.writeStyles();
      } },
    { "small",
      [](const ThemeFiles &files, int count) {
          files.writeSmall(count, ThemeFiles::Parents::None);
      } },
    { "extend-one",
      [](const ThemeFiles &files, int count) {
          files.writeSmall(count, ThemeFiles::Parents::One);
      } },
    { "extend-each",
      [](const ThemeFiles &files, int count) {
          files.writeSmall(count, ThemeFiles::Parents::Each);
      } },
};

/// \return how many files held a JSON object.
int parseAll(const QString &path)
{
    const QDir folder(path);
    const QStringList names = folder.entryList(QStringList(QStringLiteral("*.thm")));
    int parsed = 0;
    for (const QString &name : names) {
        QFile file(folder.absoluteFilePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        if (!QJsonDocument::fromJson(file.readAll()).object().isEmpty())
            ++parsed;
    }
    return parsed;
}

/// \return how many themes the catalogue has got more.
int loadAll(const QString &path)
{
    ThemeManager *manager = ThemeManager::getInstance();
    const int before = manager->rowCount(QModelIndex());
    manager->loadThemes(path);
    return manager->rowCount(QModelIndex()) - before;
}

/// \return how many themes were checked.
int checkAll(const QString &path)
{
    return checkThemes({ path }).themes;
}

int (*readerOf(LoadScenario::Reader reader))(const QString &path)
{
    switch (reader) {
    case LoadScenario::Reader::Tavolins:
        return loadAll;
    case LoadScenario::Reader::Json:
        return parseAll;
    case LoadScenario::Reader::Checker:
        break;
    }
    return checkAll;
}

} // namespace

QStringList LoadScenario::folders()
{
    QStringList names;
    for (const Folder &known : knownFolders)
        names.append(QLatin1String(known.name));
    return names;
}

QJsonObject LoadScenario::run() const
{
    int (*const read)(const QString &path) = readerOf(reader);

    const ThemeFiles warmUp;
    warmUp.writeLooks();
    read(warmUp.path());
    settle();

    const ThemeFiles files;
    knownFolders[folders().indexOf(folder)].write(files, count);
    Phase load("load");
    FileCalls::clear();
    load.begin();
    const int found = read(files.path());
    settle();
    load.end();
    const FileCalls calls = FileCalls::counted();
    if (found != count) {
        return { { QStringLiteral("error"),
                   QStringLiteral("%1 of %2 themes were read").arg(found).arg(count) } };
    }
    return {
        { QStringLiteral("load_ns"), load.finish() / count },
        { QStringLiteral("opened"), calls.opened },
        { QStringLiteral("looked_up"), calls.lookedUp },
        { QStringLiteral("listed"), calls.listed },
    };
}
