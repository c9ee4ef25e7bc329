#pragma once

#include <QByteArrayView>

/// The extension of a plug-in's folder, in whatever case.
inline constexpr QByteArrayView pluginBundleExtension = "korvanplugin";
