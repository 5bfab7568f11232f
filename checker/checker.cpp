#include "checker/checker.h"

#include "checker/rules.h"
#include "checker/stylerules.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonObject>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <vector>

namespace {

/// The codes of checkStyles().
const Code styleCodes[] = { Code::StyleError, Code::DuplicateStyle, Code::StyleWithoutBase,
                            Code::StyleOfUnknownClass, Code::StyleColor };

/// The codes for which the fonts beside the themes have to be registered.
const Code fontCodes[] = { Code::BoldWithoutEffect, Code::UnknownWeight, Code::FamilyNotInstalled,
                           Code::FontFileRefused };

/// One folder that themes are loaded from.
struct Folder
{
    ThemeFolder paths;
    /// Whether the folder itself was asked for, not only files in it.
    bool isRequested = false;
    QStringList requestedFiles;
    /// Its themes in ThemeSet: from begin to before end.
    int begin = 0;
    int end = 0;
};

class CheckRun
{
public:
    explicit CheckRun(const CheckOptions &options)
        : m_options(options)
    {
    }

    CheckReport run(const QStringList &paths)
    {
        for (const QString &path : paths)
            addPath(path);
        for (Folder &folder : m_folders)
            list(folder);
        m_set.load();

        std::vector<std::unique_ptr<RegisteredFonts>> fonts;
        if (areWanted(fontCodes)) {
            for (const Folder &folder : qAsConst(m_folders))
                fonts.push_back(std::make_unique<RegisteredFonts>(folder.paths));
        }
        m_problems.resize(m_set.themes.size());
        checkLoaded();
        checkLeftOut();

        for (int i = 0; i < m_folders.size(); ++i) {
            for (int theme = m_folders.at(i).begin; theme < m_folders.at(i).end; ++theme)
                tell(m_problems.at(theme));
            if (!m_folders.at(i).isRequested)
                continue;
            tell(checkHidden(m_folders.at(i)));
            tell(checkClosed(m_folders.at(i)));
            if (areWanted(styleCodes))
                tell(checkStyles(m_folders.at(i).paths, m_set, stylesOutside(i),
                                 m_options.importPaths));
            if (!fonts.empty())
                tell(fonts.at(size_t(i))->problems());
        }
        return m_report;
    }

private:
    void addPath(const QString &path)
    {
        const QFileInfo info(path);
        if (!info.exists() && !info.isSymLink()) {
            m_report.failures.append(QStringLiteral("there is no file or folder \"%1\"").arg(path));
        } else if (!info.isDir()) {
            Folder &folder = folderAt(info.path());
            folder.requestedFiles.append(info.fileName());
        } else if (!info.isReadable() || !info.isExecutable()) {
            m_report.failures.append(QStringLiteral("the folder \"%1\" can't be read").arg(path));
        } else {
            folderAt(path).isRequested = true;
        }
    }

    Folder &folderAt(const QString &path)
    {
        const QString filePath = QDir(path).absolutePath();
        for (Folder &folder : m_folders) {
            if (folder.paths.filePath == filePath)
                return folder;
        }
        Folder folder;
        folder.paths.path = path;
        folder.paths.filePath = filePath;
        m_folders.append(folder);
        return m_folders.last();
    }

    QString shownPath(const Folder &folder, const QString &name) const
    {
        // A file is told as it was given, so without a folder where there was none.
        return folder.paths.path == QLatin1String(".") && !folder.isRequested
                ? name
                : QDir(folder.paths.path).filePath(name);
    }

    void list(Folder &folder)
    {
        folder.begin = int(m_set.themes.size());
        QStringList names = LoadOrder::themeFiles(folder.paths.filePath);
        if (names.isEmpty() && folder.isRequested && folder.requestedFiles.isEmpty())
            m_report.failures.append(
                    QStringLiteral("no theme in \"%1\"; themes are files named *.thm")
                            .arg(folder.paths.path));
        for (const QString &name : qAsConst(folder.requestedFiles)) {
            if (!names.contains(name))
                names.append(name);
        }
        for (const QString &name : qAsConst(names))
            summarize(folder, name);
        folder.end = int(m_set.themes.size());
    }

    void summarize(const Folder &folder, const QString &name)
    {
        ThemeSummary summary;
        summary.path = shownPath(folder, name);
        summary.filePath = QDir(folder.paths.filePath).filePath(name);
        summary.isRequested = folder.isRequested || folder.requestedFiles.contains(name);
        const Document document = Document::read(summary.filePath);
        summary.fault = document.fault();
        summary.globalRoles = 0;

        LoadOrder::Entry entry;
        entry.folder = int(&folder - m_folders.constData());
        entry.name = name;
        entry.isReadable = document.fault() != Document::Unreadable
                && document.fault() != Document::Empty;
        const QJsonObject &object = document.object();
        entry.title = object.value(QLatin1String("title")).toString();
        entry.extends = object.value(QLatin1String("extends")).toString();

        if (const Node::Member *title = document.root().member(QLatin1String("title")))
            summary.place = document.position(title->node.range.begin);
        const QJsonObject global = object.value(QLatin1String("global")).toObject();
        summary.hasGlobal = !global.isEmpty();
        summary.globalRoles = colorRolesIn(global.value(QLatin1String("colors")).toObject(), true);
        for (auto member = object.begin(); member != object.end(); ++member) {
            if (member.key() == QLatin1String("global") || member.key() == QLatin1String("title"))
                continue;
            const bool isEmpty = member.value().toObject().isEmpty();
            const int number = classNumber(member.key());
            (isEmpty ? summary.emptyClasses : summary.classes).append(number);
            if (isMistakenClass(member.key(), member.value()))
                m_set.mistakenClasses.insert(number);
        }
        m_set.themes.append(summary);
        m_set.entries.append(entry);
        if (summary.isRequested)
            ++m_report.themes;
    }

    int classNumber(const QString &name)
    {
        const auto known = m_classNumbers.constFind(name);
        if (known != m_classNumbers.constEnd())
            return *known;
        const int number = int(m_set.classNames.size());
        m_set.classNames.append(name);
        m_classNumbers.insert(name, number);
        return number;
    }

    /// The themes that are built: those asked for, and what they inherit from.
    QVector<bool> neededThemes() const
    {
        QVector<bool> needed(m_set.themes.size());
        for (int i = int(m_set.order.catalogue.size()) - 1; i >= 0; --i) {
            const int theme = m_set.order.catalogue.at(i);
            if (m_set.themes.at(theme).isRequested)
                needed[theme] = true;
            const int parent = m_set.order.outcomes.at(theme).parent;
            if (needed.at(theme) && parent >= 0)
                needed[parent] = true;
        }
        return needed;
    }

    /// Checks the themes of the catalogue in its order, so that parents are there before those that
    /// extend them. A theme is kept only as long as others wait for it.
    void checkLoaded()
    {
        const QVector<bool> needed = neededThemes();
        QVector<int> children(m_set.themes.size());
        for (int theme = 0; theme < needed.size(); ++theme) {
            const int parent = m_set.order.outcomes.at(theme).parent;
            if (needed.at(theme) && parent >= 0)
                ++children[parent];
        }
        QHash<int, std::shared_ptr<ScratchTheme>> kept;
        for (const int theme : qAsConst(m_set.order.catalogue)) {
            if (!needed.at(theme))
                continue;
            const int parent = m_set.order.outcomes.at(theme).parent;
            const ThemeSummary &summary = m_set.themes.at(theme);
            const Document document = Document::read(summary.filePath);
            const auto scratch = std::make_shared<ScratchTheme>(
                    summary.filePath, document.object(),
                    parent >= 0 ? kept.value(parent).get() : nullptr);
            if (summary.isRequested)
                check(theme, document, scratch.get());
            if (children.at(theme) > 0)
                kept.insert(theme, scratch);
            if (parent >= 0 && --children[parent] == 0)
                kept.remove(parent);
        }
    }

    void checkLeftOut()
    {
        for (int theme = 0; theme < m_set.themes.size(); ++theme) {
            const ThemeSummary &summary = m_set.themes.at(theme);
            if (summary.isRequested && !m_set.order.outcomes.at(theme).isLoaded)
                check(theme, Document::read(summary.filePath), nullptr);
        }
    }

    void check(int theme, const Document &document, ScratchTheme *scratch)
    {
        const ThemeContext context{
            m_set, theme, document, scratch, m_fontFacts, m_options.contrast
        };
        Findings findings(context.summary().path, document);
        if (!context.entry().name.endsWith(QLatin1String(".thm"), Qt::CaseInsensitive)) {
            findings.add(Code::OtherExtension, Range{ 0, 0 },
                         QStringLiteral("applications load files named *.thm only"));
        }
        checkDocument(context, findings);
        if (document.fault() == Document::NoFault) {
            checkParent(context, findings);
            checkScopes(context, findings);
            checkFonts(context, findings);
            checkContrast(context, findings);
            checkAmongOthers(context, findings);
        }
        QVector<Problem> &problems = findings.problems();
        std::stable_sort(problems.begin(), problems.end());
        m_problems[theme] = problems;
    }

    /// What is named like a theme, but passed over by the catalogue.
    QVector<Problem> checkHidden(const Folder &folder) const
    {
        const QDir dir(folder.paths.filePath);
        const QStringList listed = LoadOrder::themeFiles(folder.paths.filePath);
        const QFileInfoList all = dir.entryInfoList(QStringList(QStringLiteral("*.thm")),
                                                    QDir::AllEntries | QDir::Hidden | QDir::System,
                                                    QDir::Name);
        QVector<Problem> problems;
        for (const QFileInfo &file : all) {
            if (listed.contains(file.fileName()))
                continue;
            const Document nothing = Document::plain(QByteArray());
            Findings findings(shownPath(folder, file.fileName()), nothing);
            if (file.isHidden()) {
                findings.add(Code::HiddenFile, Range{ 0, 0 },
                             QStringLiteral("hidden files are passed over"));
            } else {
                findings.add(Code::UnreadableFile, Range{ 0, 0 },
                             Document::read(file.filePath()).faultText()
                                     + QStringLiteral(", so it is passed over"));
            }
            problems += findings.problems();
        }
        return problems + checkNames(folder);
    }

    /// What Qt doesn't list, so that neither the catalogue nor this finds it by other means.
    QVector<Problem> checkNames(const Folder &folder) const
    {
        QVector<Problem> problems;
#if defined(Q_OS_UNIX)
        std::error_code error;
        const std::filesystem::directory_iterator end;
        for (std::filesystem::directory_iterator file(
                     QFile::encodeName(folder.paths.filePath).toStdString(), error);
             !error && file != end; file.increment(error)) {
            const QByteArray bytes = QByteArray::fromStdString(file->path().filename().native());
            const QString name = QString::fromUtf8(bytes);
            if (name.toUtf8() == bytes
                || !name.endsWith(QLatin1String(".thm"), Qt::CaseInsensitive))
                continue;
            const Document nothing = Document::plain(QByteArray());
            Findings findings(shownPath(folder, name), nothing);
            findings.add(
                    Code::UnreadableFile, Range{ 0, 0 },
                    QStringLiteral("the name of this file is not in UTF-8, so it is passed over"),
                    QStringLiteral("rename the file"));
            problems += findings.problems();
        }
        std::sort(problems.begin(), problems.end(),
                  [](const Problem &a, const Problem &b) { return a.file < b.file; });
#endif
        return problems;
    }

    /// Folders beside the themes that the catalogue finds nothing in as they can't be read.
    QVector<Problem> checkClosed(const Folder &folder) const
    {
        QVector<Problem> problems;
        for (const char *name : { "fonts", "styles" }) {
            const QFileInfo beside(QDir(folder.paths.filePath).filePath(QLatin1String(name)));
            if (!beside.isDir() || (beside.isReadable() && beside.isExecutable()))
                continue;
            const Document nothing = Document::plain(QByteArray());
            Findings findings(shownPath(folder, QLatin1String(name)), nothing);
            findings.add(Code::UnreadableFile, Range{ 0, 0 },
                         QStringLiteral("this folder can't be read, so it is passed over"));
            problems += findings.problems();
        }
        return problems;
    }

    template <std::size_t Count>
    bool areWanted(const Code (&codes)[Count]) const
    {
        return std::any_of(std::begin(codes), std::end(codes),
                           [this](Code code) { return !m_options.disabled.contains(code); });
    }

    QStringList stylesOutside(int folder) const
    {
        QStringList names;
        for (int i = 0; i < m_folders.size(); ++i) {
            if (i != folder)
                names += styleNames(m_folders.at(i).paths);
        }
        return names;
    }

    void tell(const QVector<Problem> &problems)
    {
        for (Problem problem : problems) {
            if (m_options.disabled.contains(problem.code))
                continue;
            if (m_options.warningsAreErrors && problem.severity == Severity::Warning)
                problem.severity = Severity::Error;
            m_report.problems.append(problem);
        }
    }

    const CheckOptions &m_options;
    QVector<Folder> m_folders;
    ThemeSet m_set;
    QHash<QString, int> m_classNumbers;
    FontFacts m_fontFacts;
    QVector<QVector<Problem>> m_problems;
    CheckReport m_report;
};

} // namespace

int CheckReport::count(Severity severity) const
{
    return int(std::count_if(problems.begin(), problems.end(), [severity](const Problem &problem) {
        return problem.severity == severity;
    }));
}

CheckReport checkThemes(const QStringList &paths, const CheckOptions &options)
{
    return CheckRun(options).run(paths);
}
