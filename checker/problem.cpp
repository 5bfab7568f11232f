#include "checker/problem.h"

#include <tuple>

namespace {

const int longestExcerpt = 100;
const int excerptBefore = 60;

} // namespace

void Problem::locate(const QString &path, const Document &document, const Range &range)
{
    file = path;
    begin = document.position(range.begin);
    end = document.position(range.end);
    QVector<uint> line = QString::fromUtf8(document.line(begin.line)).toUcs4();
    if (line.size() > longestExcerpt) {
        excerptColumn = qBound(0, begin.column - 1 - excerptBefore, line.size() - longestExcerpt);
        line = line.mid(excerptColumn, longestExcerpt);
    }
    excerpt = QString::fromUcs4(line.constData(), line.size());
}

bool Problem::operator<(const Problem &other) const
{
    const auto members = [](const Problem &problem) {
        return std::tie(problem.begin.line, problem.begin.column, problem.code, problem.message);
    };
    return members(*this) < members(other);
}
