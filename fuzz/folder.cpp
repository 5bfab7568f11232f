#include "fuzz/inputreader.h"
#include "fuzz/session.h"
#include "fuzz/targets.h"

#include <QtCore/QDir>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QStringList>

namespace {

const char *const names[] = { "a.thm",         "b.thm",     "B.thm",        "c.thm",
                              "d.THM",         ".e.thm",    "f.thm.bak",    "g h.thm",
                              "a.thm/inner",   "notes.txt", "styles/X.qml", "styles/Y.z.QML",
                              "fonts/bad.ttf", "styles",    "fonts" };
const char *const titles[] = { "A", "B", "C", "a", "", "A B" };
const int maximalFile = 4096;

/// A document of which only the links to other themes are made up by the input.
QByteArray document(InputReader &input)
{
    QJsonObject document;
    document.insert(QStringLiteral("title"), input.oneOf(titles));
    if (input.yes())
        document.insert(QStringLiteral("extends"), input.oneOf(titles));
    if (input.yes()) {
        document.insert(QStringLiteral("global"),
                        QJsonObject{ { QStringLiteral("radius"), input.below(256) } });
    }
    return QJsonDocument(document).toJson();
}

struct Expectation
{
    QStringList titles;
    int openFailures = 0;
};

/// What loading \a folder must add to the \a known titles.
Expectation expectation(const QDir &folder, QStringList known)
{
    Expectation result;
    QStringList waiting;
    const auto tryToLoad = [&](const QString &name, bool mayWait) {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::ReadOnly)) {
            ++result.openFailures;
            return;
        }
        const QByteArray text = file.readAll();
        if (text.isEmpty())
            return;
        const QJsonObject document = QJsonDocument::fromJson(text).object();
        const QString extends = document.value(QLatin1String("extends")).toString();
        if (extends.isEmpty() || known.contains(extends)) {
            const QString title = document.value(QLatin1String("title")).toString();
            result.titles.append(title);
            known.append(title);
        } else if (mayWait) {
            waiting.append(name);
        }
    };
    const QStringList themeFiles = folder.entryList({ QStringLiteral("*.thm") });
    for (const QString &name : themeFiles)
        tryToLoad(name, true);
    const QStringList second = waiting;
    for (const QString &name : second)
        tryToLoad(name, false);
    return result;
}

QStringList catalogue(const ThemeManager *manager)
{
    QStringList result;
    for (int row = 0; row < manager->rowCount(); ++row)
        result.append(manager->data(manager->index(row)).toString());
    return result;
}

void loadAndCheck(FuzzSession &session, const QString &wanted)
{
    ThemeManager *manager = session.manager();
    const QStringList before = catalogue(manager);
    const int failuresBefore = session.openFailures();
    const Theme *currentBefore = manager->current();
    const Expectation expected = expectation(QDir(session.folder()), before);

    manager->loadThemes(session.folder(), wanted);
    const QStringList after = catalogue(manager);
    FuzzSession::check(after == before + expected.titles, "the files make up the rows");
    FuzzSession::check(session.openFailures() - failuresBefore == expected.openFailures,
                       "each file that can't be opened is told of once");

    const int row = wanted.isEmpty() ? -1 : after.indexOf(wanted);
    if (row < 0) {
        FuzzSession::check(manager->current() == currentBefore, "the current theme stays");
        return;
    }
    FuzzSession::check(manager->currentIndex() == row, "the first theme of the title is current");
    FuzzSession::check(FuzzSession::sameValues(*Theme::global(), *manager->current()),
                       "the global theme holds the current theme's values");
}

} // namespace

void fuzzFolder(const std::uint8_t *data, std::size_t size)
{
    FuzzSession session;
    InputReader input(data, size);

    for (int folders = 1 + input.below(2); folders > 0; --folders) {
        for (int files = input.below(7); files > 0; --files) {
            const QString name = input.oneOf(names);
            session.write(name, input.yes() ? input.bytes(maximalFile) : document(input));
        }
        loadAndCheck(session, input.oneOf(titles));
        // Each switch watches another file.
        for (int switches = input.below(4); switches > 0; --switches)
            session.manager()->setCurrentIndex(input.below(16) - 2);
        FuzzSession::settle();
    }
}
