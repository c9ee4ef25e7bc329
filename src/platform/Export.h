#pragma once

#include <QtCore/qglobal.h>

/// Marks what the shared library offers to hosts. Everything else stays hidden inside it.
#if defined(KORVAN_BUILDING_LIBRARY)
#define KORVAN_EXPORT Q_DECL_EXPORT
#else
#define KORVAN_EXPORT Q_DECL_IMPORT
#endif
