#pragma once

#include <QIcon>

/// One of the program's own pictures, drawn in the colour that the palette has for text at the moment of drawing, at
/// any size and resolution. `name` is that of a file in icons/.
QIcon lineIcon(const QString &name);

/// The icon for a layer of that type.
QIcon layerIcon(const QString &type);

/// The program's own icon.
QIcon programIcon();
