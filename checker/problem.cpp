#include "checker/problem.h"

#include <tuple>

void Problem::locate(const QString &path, const Document &document, Range range)
{
    file = path;
    begin = document.position(range.begin);
    end = document.position(range.end);
    excerpt = document.excerpt(range.begin, &excerptColumn);
}

bool Problem::operator<(const Problem &other) const
{
    const auto members = [](const Problem &problem) {
        return std::tie(problem.begin.line, problem.begin.column, problem.code, problem.message);
    };
    return members(*this) < members(other);
}
