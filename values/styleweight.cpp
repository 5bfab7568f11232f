#include "values/styleweight.h"

#include <QtGui/QFontDatabase>
#include <QtGui/QGuiApplication>

namespace {

int lookedUp(const QString &family, const QString &style)
{
    // The font database ends the process when it is used without a GUI application.
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        return -1;
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return QFontDatabase::weight(family, style);
#else
    return QFontDatabase().weight(family, style);
#endif
}

} // namespace

StyleWeight::StyleWeight(const QString &family, const QString &style)
    : m_family(family)
    , m_style(style)
    , m_weight(lookedUp(family, style))
{
}

bool StyleWeight::stillHolds() const
{
    return lookedUp(m_family, m_style) == m_weight;
}
