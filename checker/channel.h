#pragma once

#include <QtCore/QtGlobal>

/// The type of QColor's channels.
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
typedef float Channel;
#else
typedef qreal Channel;
#endif
