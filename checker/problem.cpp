#include "checker/problem.h"

#include <string>
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
    // In characters, as columns are counted.
    std::u32string line = QString::fromUtf8(document.line(begin.line)).toStdU32String();
    if (const int length = int(line.size()); length > longestExcerpt) {
        excerptColumn = qBound(0, begin.column - 1 - excerptBefore, length - longestExcerpt);
        line = line.substr(size_t(excerptColumn), size_t(longestExcerpt));
    }
    excerpt = QString::fromStdU32String(line);
}

bool Problem::operator<(const Problem &other) const
{
    const auto members = [](const Problem &problem) {
        return std::tie(problem.begin.line, problem.begin.column, problem.code, problem.message);
    };
    return members(*this) < members(other);
}
