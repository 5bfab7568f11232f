#include "evaluations.h"

Evaluations *Evaluations::instance()
{
    static Evaluations *const evaluations = new Evaluations;
    return evaluations;
}

void Evaluations::count(int binding)
{
    ++m_counts[binding];
}

void Evaluations::clear()
{
    m_counts.fill(0);
}

QVector<int> Evaluations::counts() const
{
    return m_counts;
}
