#include "checker/themefault.h"

#include "checker/checker.h"
#include "checker/words.h"

#include <algorithm>
#include <iterator>

namespace {

const Code faultCodes[] = {
    Code::SyntaxError,    Code::NotUtf8,     Code::EmptyFile,      Code::NotAnObject,
    Code::UnreadableFile, Code::HiddenFile,  Code::OtherExtension, Code::UnknownParent,
    Code::ExtendsItself,  Code::ExtendsRing, Code::ParentTooLate,  Code::ParentLeftOut,
};

} // namespace

QVector<Problem> themeFaults(const QString &path)
{
    CheckOptions options;
    options.contrast = 0;
    for (const CodeInfo &info : Codes::all()) {
        if (std::find(std::begin(faultCodes), std::end(faultCodes), info.code)
            == std::end(faultCodes))
            options.disabled.insert(info.code);
    }
    return checkThemes({ path }, options).problems;
}

QString lineOf(const Problem &problem)
{
    const QString text = (QStringList(problem.message) + problem.help).join(QLatin1String("; "));
    return QStringLiteral("%1:%2:%3: %4: %5 [%6]")
            .arg(Words::harmless(problem.file))
            .arg(problem.begin.line)
            .arg(problem.begin.column)
            .arg(Codes::severityName(problem.severity), Words::harmless(text),
                 Codes::info(problem.code).name);
}
