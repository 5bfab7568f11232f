#include "checker/findings.h"

void Findings::add(Code code, Range range, const QString &message, const QStringList &help)
{
    add(Codes::info(code).severity, code, range, message, help);
}

void Findings::add(Code code, Range range, const QString &message, const QString &help)
{
    add(code, range, message, help.isEmpty() ? QStringList() : QStringList(help));
}

void Findings::add(Severity severity, Code code, Range range, const QString &message,
                   const QStringList &help)
{
    Problem problem;
    problem.code = code;
    problem.severity = severity;
    problem.message = message;
    problem.help = help;
    problem.locate(m_path, m_document, range);
    m_problems.append(problem);
}
