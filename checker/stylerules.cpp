#include "checker/stylerules.h"

#include "checker/words.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtCore/QUrl>
#include <QtGui/QFontDatabase>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>

#include <algorithm>
#include <memory>

namespace {

const QChar variantSeparator = QLatin1Char('_');

/// The files in the folder \a name beside the themes, as the plugin lists them, but sorted.
QFileInfoList filesIn(const ThemeFolder &folder, const QString &name,
                      const QStringList &patterns = QStringList())
{
    QDir dir(folder.filePath);
    if (!dir.cd(name))
        return QFileInfoList();
    return dir.entryInfoList(patterns, QDir::Files, QDir::Name);
}

QFileInfoList styleFiles(const ThemeFolder &folder)
{
    return filesIn(folder, QStringLiteral("styles"), QStringList(QStringLiteral("*.qml")));
}

QString shownPath(const ThemeFolder &folder, const QString &subfolder, const QFileInfo &file)
{
    return QDir(folder.path).filePath(subfolder + QLatin1Char('/') + file.fileName());
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Looks through the styles of one folder.
class StyleCheck
{
public:
    StyleCheck(const ThemeFolder &folder, const ThemeSet &set, const QStringList &stylesElsewhere,
               const QStringList &importPaths)
        : m_folder(folder)
        , m_set(set)
        , m_files(styleFiles(folder))
        , m_styles(stylesElsewhere)
        , m_importPaths(importPaths)
    {
    }

    QVector<Problem> run()
    {
        if (m_files.isEmpty())
            return m_problems;
        for (const QFileInfo &file : m_files)
            m_styles.append(file.baseName());
        // One that lives for a single run never shows a file as it was before.
        QQmlEngine engine;
        engine.setOutputWarningsToStandardError(false);
        for (const QString &path : m_importPaths)
            engine.addImportPath(path);
        for (const QFileInfo &file : m_files)
            checkFile(file, &engine);
        return m_problems;
    }

private:
    void checkFile(const QFileInfo &file, QQmlEngine *engine)
    {
        const Document text = Document::plain(contentOf(file.absoluteFilePath()));
        Findings findings(shownPath(m_folder, QStringLiteral("styles"), file), text);
        checkName(file, findings);
        compile(file, text, engine, findings);
        findColors(text, findings);
        QVector<Problem> &problems = findings.problems();
        std::stable_sort(problems.begin(), problems.end());
        m_problems += problems;
    }

    void checkName(const QFileInfo &file, Findings &findings)
    {
        const QString name = file.baseName();
        for (const QFileInfo &other : m_files) {
            if (other.fileName() == file.fileName())
                break;
            if (other.baseName() != name)
                continue;
            findings.add(
                    Code::DuplicateStyle, Range{ 0, 0 },
                    QStringLiteral("%1 makes the style %2 as well, and only one of them counts")
                            .arg(other.fileName(), Words::quoted(name)),
                    QStringLiteral("the name of a style ends at the first point"));
        }
        checkVariant(name, findings);
    }

    void checkVariant(const QString &name, Findings &findings)
    {
        QStringList classes;
        // Both names may have underscores in them.
        for (auto i = name.indexOf(variantSeparator); i >= 0;
             i = name.indexOf(variantSeparator, i + 1)) {
            if (m_styles.contains(name.left(i)))
                classes.append(name.mid(i + 1));
        }
        const auto separator = name.indexOf(variantSeparator);
        if (separator < 0)
            return;
        if (classes.isEmpty()) {
            findings.add(Code::StyleWithoutBase, Range{ 0, 0 },
                         QStringLiteral("this is the variant of a style %1 that is not there, so "
                                        "other items get none")
                                 .arg(Words::quoted(name.left(separator))));
            return;
        }
        for (const QString &classname : qAsConst(classes)) {
            if (m_set.isShown(classname))
                return;
        }
        QStringList described;
        for (int i = 0; i < m_set.classUses.size(); ++i) {
            if (m_set.classUses.at(i).count > 0)
                described.append(m_set.classNames.at(i));
        }
        const QString nearest = Words::nearest(classes.first(), described);
        findings.add(Code::StyleOfUnknownClass, Range{ 0, 0 },
                     QStringLiteral("this is the variant for a class %1 that no theme describes")
                             .arg(Words::quoted(classes.first())),
                     nearest.isEmpty()
                             ? QString()
                             : QStringLiteral("did you mean %1?").arg(Words::quoted(nearest)));
    }

    void compile(const QFileInfo &file, const Document &text, QQmlEngine *engine,
                 Findings &findings)
    {
        const QUrl url = QUrl::fromLocalFile(file.absoluteFilePath());
        const QQmlComponent component(engine, url, QQmlComponent::PreferSynchronous);
        const QList<QQmlError> errors = component.errors();
        for (const QQmlError &error : errors) {
            const QFileInfo other(error.url().toLocalFile());
            // Another style is looked at by itself.
            if (error.url() != url && other.path() == file.path())
                continue;
            QString message = error.description();
            Range range{ 0, 0 };
            if (error.url() == url)
                range = text.rangeAt(error.line(), error.column());
            else if (error.url().isLocalFile())
                message = QStringLiteral("%1:%2: %3")
                                  .arg(other.fileName())
                                  .arg(error.line())
                                  .arg(message);
            QString help;
            if (message.contains(QLatin1String("is not installed")))
                help = QStringLiteral("`--import DIR` tells where modules are");
            findings.add(Code::StyleError, range, message, help);
        }
    }

    /// Colors in texts and in calls, comments left out.
    static void findColors(const Document &document, Findings &findings)
    {
        static const QRegularExpression token(
                QStringLiteral(
                        R"(//[^\n]*|/\*.*?\*/|"(?:[^"\\\n]|\\.)*"|'(?:[^'\\\n]|\\.)*'|\bQt\.(?:rgba|hsla|hsva)\b)"),
                QRegularExpression::DotMatchesEverythingOption);
        static const QRegularExpression colorProperty(
                QStringLiteral(R"([cC]olor\s*(?::|=|===?|\?|:)\s*$)"));
        static const QRegularExpression hexadecimal(
                QStringLiteral("^#(?:[0-9a-fA-F]{3,4}|[0-9a-fA-F]{6}|[0-9a-fA-F]{8})$"));
        const QByteArray &bytes = document.text();
        const QString text = QString::fromUtf8(bytes.constData(), int(bytes.size()));
        int known = 0;
        int knownOffset = 0;
        QRegularExpressionMatchIterator tokens = token.globalMatch(text);
        while (tokens.hasNext()) {
            const QRegularExpressionMatch match = tokens.next();
            const QString found = match.captured();
            if (found.startsWith(QLatin1Char('/')))
                continue;
            const QString content = found.mid(1, found.size() - 2);
            const int start = int(match.capturedStart());
            const QString before = text.mid(std::max(0, start - 60), std::min(60, start));
            const bool isColor = found.startsWith(QLatin1String("Qt."))
                    || hexadecimal.match(content).hasMatch()
                    || (colorProperty.match(before).hasMatch() && readColor(content).isValid());
            if (!isColor || content == QLatin1String("transparent"))
                continue;
            knownOffset += int(text.mid(known, start - known).toUtf8().size());
            known = start;
            findings.add(Code::StyleColor,
                         Range{ knownOffset, knownOffset + int(found.toUtf8().size()) },
                         QStringLiteral("the color %1 is the same in every theme")
                                 .arg(Words::quoted(found)),
                         QStringLiteral("read `Theme.colors` instead"));
        }
    }

    const ThemeFolder &m_folder;
    const ThemeSet &m_set;
    const QFileInfoList m_files;
    QStringList m_styles;
    const QStringList &m_importPaths;
    QVector<Problem> m_problems;
};

} // namespace

QVector<Problem> checkStyles(const ThemeFolder &folder, const ThemeSet &set,
                             const QStringList &stylesElsewhere, const QStringList &importPaths)
{
    return StyleCheck(folder, set, stylesElsewhere, importPaths).run();
}

QStringList styleNames(const ThemeFolder &folder)
{
    QStringList names;
    const QFileInfoList files = styleFiles(folder);
    for (const QFileInfo &file : files)
        names.append(file.baseName());
    return names;
}

RegisteredFonts::RegisteredFonts(const ThemeFolder &folder)
{
    const QFileInfoList files = filesIn(folder, QStringLiteral("fonts"));
    for (const QFileInfo &file : files) {
        const int id = QFontDatabase::addApplicationFont(file.absoluteFilePath());
        if (id >= 0) {
            m_ids.append(id);
            continue;
        }
        static const QStringList fontSuffixes = {
            QStringLiteral("ttf"), QStringLiteral("otf"),  QStringLiteral("ttc"),
            QStringLiteral("otc"), QStringLiteral("woff"), QStringLiteral("woff2"),
            QStringLiteral("pfa"), QStringLiteral("pfb"),
        };
        const bool shouldBeFont = fontSuffixes.contains(file.suffix().toLower());
        const Document nothing = Document::plain(QByteArray());
        Findings findings(shownPath(folder, QStringLiteral("fonts"), file), nothing);
        findings.add(shouldBeFont ? Severity::Error : Severity::Note, Code::FontFileRefused,
                     Range{ 0, 0 },
                     shouldBeFont ? QStringLiteral("the font database refuses this file")
                                  : QStringLiteral("this file is no font"));
        m_problems += findings.problems();
    }
}

RegisteredFonts::~RegisteredFonts()
{
    for (const int id : qAsConst(m_ids))
        QFontDatabase::removeApplicationFont(id);
}
