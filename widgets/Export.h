#pragma once

#include <QtCore/qglobal.h>

/// Marks what the Widgets library offers to hosts.
#if defined(KORVAN_BUILDING_WIDGETS)
#define KORVAN_WIDGETS_EXPORT Q_DECL_EXPORT
#else
#define KORVAN_WIDGETS_EXPORT Q_DECL_IMPORT
#endif
