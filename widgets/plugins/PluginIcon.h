#pragma once

#include <QIcon>

class KRPluginBundle;

/// The plug-in's picture, or the application's for plug-ins that have none, or a drawn one: never null. Sharp up to 64
/// points on the densest screen.
QIcon pluginIcon(const KRPluginBundle &bundle);
