#pragma once

#include <QIcon>

class QPainter;
class QRectF;

/// The small pictures of this library's windows.
enum class Symbol { Plugin, Search, Refresh, Download, Add, Trash, Folder, Edit, Stop, Close, Copy, Clear, Warning };

/// Drawn anew for every size, in the colours of the palette that is in force then.
QIcon symbolIcon(Symbol symbol);

/// Into a square, with the painter's pen.
void drawSymbol(QPainter &painter, Symbol symbol, const QRectF &square);
