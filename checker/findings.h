#pragma once

#include "checker/problem.h"

/// Takes down the problems of one file.
class Findings
{
public:
    /// \a document must outlive this.
    Findings(const QString &path, const Document &document)
        : m_path(path)
        , m_document(document)
    {
    }

    /// Takes down a problem with the severity of its \a code.
    void add(Code code, Range range, const QString &message,
             const QStringList &help = QStringList());
    void add(Code code, Range range, const QString &message, const QString &help);

    /// Takes down a problem that is less grave than others of its \a code.
    void add(Severity severity, Code code, Range range, const QString &message,
             const QStringList &help = QStringList());

    QVector<Problem> &problems() { return m_problems; }

private:
    QString m_path;
    const Document &m_document;
    QVector<Problem> m_problems;
};
