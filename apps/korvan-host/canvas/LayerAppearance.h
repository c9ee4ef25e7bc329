#pragma once

#include <QColor>
#include <QFont>
#include <QRectF>
#include <QString>

class Layer;

/// What a layer looks like: its frame and style read once, so that painting asks no dictionaries.
struct LayerAppearance
{
    enum class Shape {
        /// A group: only what is in it is seen.
        None,
        Rectangle,
        Oval,
        Text,
        Image
    };

    Shape shape = Shape::Rectangle;
    /// In the document's points.
    QRectF frame;
    /// Invalid for none.
    QColor fill;
    QColor border;
    double borderWidth = 0;
    double cornerRadius = 0;
    double opacity = 1;
    QString text;
    QFont font;
    Qt::Alignment alignment = Qt::AlignLeft;
    /// A URL; empty for no picture.
    QString image;

    friend bool operator==(const LayerAppearance &, const LayerAppearance &) = default;
};

/// Values that make no sense count as absent. A shape with neither fill nor border is grey, so that it can be found.
LayerAppearance appearanceOf(const Layer &layer);

/// "#RGB", "#RRGGBB", "#RRGGBBAA" as stylesheets have it, or a colour's English name. Invalid for anything else.
QColor colourFromText(const QString &text);
/// As "#RRGGBB", with "AA" where the colour is not opaque.
QString textFromColour(const QColor &colour);
