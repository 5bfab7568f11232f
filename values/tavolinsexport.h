#pragma once

#include <QtCore/qglobal.h>

/// \file
/// Marks what the shared library exports. Everything else stays hidden, so that code which
/// links the library can only use what these headers document.
#if defined(TAVOLINS_LIBRARY)
#define TAVOLINS_EXPORT Q_DECL_EXPORT
#else
#define TAVOLINS_EXPORT Q_DECL_IMPORT
#endif
