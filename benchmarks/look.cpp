#include "look.h"

namespace {

QFont sans(int pointSize)
{
    QFont font(QStringLiteral("sans"));
    font.setPointSize(pointSize);
    return font;
}

} // namespace

const Look &Look::at(int index)
{
    static const std::array<Look, lookCount> looks = { {
            { QColor(0xf0f0f4), QColor(0x202028), QColor(0x1060c0), 4, sans(9) },
            { QColor(0x18181c), QColor(0xe8e8f0), QColor(0x60b0ff), 6, sans(12) },
    } };
    return looks.at(std::size_t(index));
}
