#include "checker/checker.h"
#include "checker/report.h"
#include "checker/themewatch.h"
#include "tool/command.h"
#include "tool/modulepath.h"
#include "tool/subcommands.h"
#include "tool/terminal.h"

#include <QtCore/QCoreApplication>

namespace {

struct ContrastLevel
{
    const char *name;
    double ratio;
};

const ContrastLevel contrastLevels[] = { { "AA", 4.5 }, { "AAA", 7.0 }, { "off", 0.0 } };

QString codeList()
{
    QString text;
    for (const CodeInfo &info : Codes::all()) {
        text += QStringLiteral("%1 %2 %3\n")
                        .arg(info.name, -24)
                        .arg(Codes::severityName(info.severity), -8)
                        .arg(info.summary);
    }
    return text;
}

class CheckCommand
{
public:
    CheckCommand()
        : m_command(QStringLiteral("check"),
                    QStringLiteral("Tells what is wrong with themes.\n\n"
                                   "A folder is checked with all that an application finds in it; "
                                   "several folders count as loaded one after another.\n\n"
                                   "Exit codes:\n"
                                   "  0  no problems, or notes only\n"
                                   "  1  errors or warnings\n"
                                   "  2  wrong arguments, or something can't be read"))
        , m_format(QStringLiteral("format"),
                   QStringLiteral("Prints text, json (one object) or sarif (SARIF 2.1.0). Default: "
                                  "text."),
                   QStringLiteral("FORMAT"), QStringLiteral("text"))
        , m_contrast(QStringLiteral("contrast"),
                     QStringLiteral("The contrast that texts need: AA (4.5), AAA (7) or off. "
                                    "Default: AA."),
                     QStringLiteral("LEVEL"), QStringLiteral("AA"))
        , m_disable(QStringLiteral("disable"),
                    QStringLiteral("Leaves out the problems with these codes, separated by commas. "
                                   "May be repeated."),
                    QStringLiteral("CODE"))
        , m_only(QStringLiteral("only"),
                 QStringLiteral("Tells the problems with these codes only. May be repeated."),
                 QStringLiteral("CODE"))
        , m_werror(QStringLiteral("werror"), QStringLiteral("Tells warnings as errors."))
        , m_watch(QStringLiteral("watch"),
                  QStringLiteral("Goes on and checks again at each change, until it is stopped."))
        , m_import(QStringLiteral("import"),
                   QStringLiteral("Where QML modules are that styles import. May be repeated."),
                   QStringLiteral("DIR"))
        , m_listCodes(QStringLiteral("list-codes"),
                      QStringLiteral("Prints all codes with their severities and ends."))
        , m_color(Terminal::colorOption())
    {
        QCommandLineParser &parser = m_command.parser();
        parser.addOptions({ m_format, m_contrast, m_disable, m_only, m_werror, m_watch, m_import,
                            m_listCodes, m_color });
        parser.addPositionalArgument(QStringLiteral("PATH"),
                                     QStringLiteral("Folders of themes, or theme files."),
                                     QStringLiteral("PATH..."));
    }

    int run(const QStringList &arguments)
    {
        if (!m_command.parse(arguments))
            return m_command.exitCode();
        const QCommandLineParser &parser = m_command.parser();
        if (parser.isSet(m_listCodes)) {
            print(codeList());
            return Success;
        }
        const QString problem = readOptions();
        if (!problem.isEmpty())
            return m_command.refuse(problem);
        const int result = checkOnce();
        if (!parser.isSet(m_watch))
            return result;
        // Made after the first check would be too late for what changes during it.
        QObject::connect(m_themeWatch.get(), &ThemeWatch::changed, m_themeWatch.get(), [this] {
            checkOnce();
            if (isOutputLost())
                QCoreApplication::exit(UsageError);
        });
        return isOutputLost() ? int(UsageError) : QCoreApplication::exec();
    }

private:
    /// \return what is wrong with the options; empty if nothing is.
    QString readOptions()
    {
        const QCommandLineParser &parser = m_command.parser();
        m_paths = parser.positionalArguments();
        if (m_paths.isEmpty())
            return QStringLiteral("name a folder of themes, or theme files");
        const QString format = parser.value(m_format);
        const QStringList formats{ QStringLiteral("text"), QStringLiteral("json"),
                                   QStringLiteral("sarif") };
        if (!formats.contains(format))
            return notOneOf(QStringLiteral("format"), format, formats);
        QString problem = Terminal::colorProblem(parser.value(m_color));
        if (!problem.isEmpty())
            return problem;
        if (parser.isSet(m_watch) && format == QLatin1String("sarif"))
            return QStringLiteral("--watch goes with the formats text and json only");
        problem = readCodes();
        if (!problem.isEmpty())
            return problem;
        m_options.warningsAreErrors = parser.isSet(m_werror);
        m_options.importPaths = QStringList(modulePath()) + parser.values(m_import);
        if (parser.isSet(m_watch))
            m_themeWatch = std::make_unique<ThemeWatch>(m_paths);
        for (const ContrastLevel &level : contrastLevels) {
            if (parser.value(m_contrast).compare(QLatin1String(level.name), Qt::CaseInsensitive)
                == 0) {
                m_options.contrast = level.ratio;
                return QString();
            }
        }
        return notOneOf(QStringLiteral("contrast"), parser.value(m_contrast),
                        { QStringLiteral("AA"), QStringLiteral("AAA"), QStringLiteral("off") });
    }

    QString readCodes()
    {
        const QCommandLineParser &parser = m_command.parser();
        QSet<Code> only;
        QString problem = readCodes(parser.values(m_only), &only);
        if (problem.isEmpty())
            problem = readCodes(parser.values(m_disable), &m_options.disabled);
        if (problem.isEmpty() && parser.isSet(m_only) && only.isEmpty())
            problem = QStringLiteral("--only names no code");
        if (parser.isSet(m_only)) {
            for (const CodeInfo &info : Codes::all()) {
                if (!only.contains(info.code))
                    m_options.disabled.insert(info.code);
            }
        }
        return problem;
    }

    static QString readCodes(const QStringList &values, QSet<Code> *codes)
    {
        const QStringList names = values.join(QLatin1Char(',')).split(QLatin1Char(','));
        for (const QString &name : names) {
            if (name.isEmpty())
                continue;
            const CodeInfo *info = Codes::find(name);
            if (!info)
                return noSuchCode(name);
            codes->insert(info->code);
        }
        return QString();
    }

    int checkOnce()
    {
        const CheckReport report = checkThemes(m_paths, m_options);
        printReport(report);
        for (const QString &failure : report.failures)
            m_command.complain(failure);
        if (!report.failures.isEmpty())
            return UsageError;
        return report.count(Severity::Error) + report.count(Severity::Warning) > 0 ? ProblemsFound
                                                                                   : Success;
    }

    void printReport(const CheckReport &report)
    {
        const QCommandLineParser &parser = m_command.parser();
        const QString format = parser.value(m_format);
        if (format == QLatin1String("json")) {
            print(QString::fromUtf8(Report::json(report)));
        } else if (format == QLatin1String("sarif")) {
            print(QString::fromUtf8(Report::sarif(report)));
        } else {
            Report::TextStyle style;
            style.hasColors = Terminal::wantsColors(parser.value(m_color));
            style.hasSource = Terminal::isPresent() || style.hasColors;
            QString text = Report::text(report, style);
            // Each report takes the place of the one before.
            if (parser.isSet(m_watch) && Terminal::isPresent())
                text.prepend(QLatin1String("\033[2J\033[H"));
            print(text);
        }
    }

    Command m_command;
    QCommandLineOption m_format;
    QCommandLineOption m_contrast;
    QCommandLineOption m_disable;
    QCommandLineOption m_only;
    QCommandLineOption m_werror;
    QCommandLineOption m_watch;
    QCommandLineOption m_import;
    QCommandLineOption m_listCodes;
    QCommandLineOption m_color;
    QStringList m_paths;
    CheckOptions m_options;
    std::unique_ptr<ThemeWatch> m_themeWatch;
};

} // namespace

int runCheck(const QStringList &arguments)
{
    return CheckCommand().run(arguments);
}
