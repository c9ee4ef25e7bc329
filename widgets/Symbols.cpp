#include "widgets/Symbols.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace {

/// On a square from 0 to 16.
QPainterPath outline(Symbol symbol)
{
    QPainterPath path;
    const auto line = [&path](std::initializer_list<QPointF> points) {
        path.moveTo(*points.begin());
        for (const auto &point : points)
            path.lineTo(point);
    };
    switch (symbol) {
    case Symbol::Plugin:
        line({{3, 6}, {3, 13.5}, {12, 13.5}, {12, 10.6}});
        path.arcTo(QRectF(11, 7.6, 3, 3), -110, 220);
        line({{12, 7.7}, {12, 6}, {9.2, 6}});
        path.moveTo(3, 6);
        path.lineTo(6, 6);
        path.arcTo(QRectF(6, 3, 3, 3), 250, -320);
        break;
    case Symbol::Search:
        path.addEllipse(QPointF(7, 7), 4.2, 4.2);
        line({{10.2, 10.2}, {13.6, 13.6}});
        break;
    case Symbol::Refresh:
        path.arcMoveTo(QRectF(3, 3, 10, 10), 40);
        path.arcTo(QRectF(3, 3, 10, 10), 40, 290);
        line({{12.6, 1.9}, {12.6, 5.1}, {9.4, 5.1}});
        break;
    case Symbol::Download:
        line({{8, 2.5}, {8, 10.5}});
        line({{4.7, 7.3}, {8, 10.6}, {11.3, 7.3}});
        line({{3, 13.3}, {13, 13.3}});
        break;
    case Symbol::Add:
        line({{8, 3}, {8, 13}});
        line({{3, 8}, {13, 8}});
        break;
    case Symbol::Trash:
        line({{2.8, 4.5}, {13.2, 4.5}});
        line({{6, 4.3}, {6.4, 2.6}, {9.6, 2.6}, {10, 4.3}});
        line({{4, 4.6}, {4.7, 13.6}, {11.3, 13.6}, {12, 4.6}});
        break;
    case Symbol::Folder:
        line({{2.5, 12.8}, {2.5, 3.4}, {6.4, 3.4}, {7.9, 5.2}, {13.5, 5.2}, {13.5, 12.8}, {2.5, 12.8}});
        break;
    case Symbol::Edit:
        line({{3, 13}, {3.6, 10.2}, {10.8, 3}, {13, 5.2}, {5.8, 12.4}, {3, 13}});
        break;
    case Symbol::Stop:
        path.addRoundedRect(QRectF(4, 4, 8, 8), 1.2, 1.2);
        break;
    case Symbol::Close:
        line({{4, 4}, {12, 12}});
        line({{12, 4}, {4, 12}});
        break;
    case Symbol::Copy:
        path.addRoundedRect(QRectF(5.5, 5.5, 7.5, 8), 1, 1);
        line({{3, 10.5}, {3, 3}, {10, 3}});
        break;
    case Symbol::Clear:
        path.addEllipse(QPointF(8, 8), 5.2, 5.2);
        line({{4.4, 11.6}, {11.6, 4.4}});
        break;
    case Symbol::Warning:
        line({{8, 2.8}, {14, 13.2}, {2, 13.2}, {8, 2.8}});
        line({{8, 6.6}, {8, 9.6}});
        line({{8, 11.3}, {8, 11.5}});
        break;
    }
    return path;
}

class SymbolEngine final : public QIconEngine
{
public:
    explicit SymbolEngine(Symbol symbol)
        : m_symbol(symbol)
    { }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const auto role = mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::ButtonText;
        const int side = std::min(rect.width(), rect.height());
        painter->save();
        painter->setPen(QGuiApplication::palette().color(group, role));
        drawSymbol(*painter, m_symbol,
            QRectF(rect.x() + (rect.width() - side) / 2.0, rect.y() + (rect.height() - side) / 2.0, side, side));
        painter->restore();
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }
    QIconEngine *clone() const override { return new SymbolEngine(m_symbol); }
    QString key() const override { return QStringLiteral("KorvanSymbol"); }

private:
    Symbol m_symbol;
};

} // namespace

QIcon symbolIcon(Symbol symbol)
{
    return QIcon(new SymbolEngine(symbol));
}

void drawSymbol(QPainter &painter, Symbol symbol, const QRectF &square)
{
    constexpr qreal grid = 16;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(square.topLeft());
    painter.scale(square.width() / grid, square.height() / grid);
    painter.setPen(QPen(painter.pen().color(), 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(symbol == Symbol::Stop ? QBrush(painter.pen().color()) : QBrush());
    painter.drawPath(outline(symbol));
    painter.restore();
}
