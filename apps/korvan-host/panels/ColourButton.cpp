#include "panels/ColourButton.h"

#include "canvas/LayerAppearance.h"

#include <QColorDialog>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

ColourButton::ColourButton(const QString &name, QWidget *parent)
    : QToolButton(parent)
{
    setAccessibleName(name);
    setFixedSize(44, 24);
    setFocusPolicy(Qt::StrongFocus);
    setColour({});
    connect(this, &QToolButton::clicked, this, &ColourButton::choose);
}

void ColourButton::setColour(const QColor &colour)
{
    m_colour = colour;
    const auto text = colour.isValid() ? textFromColour(colour) : tr("none");
    setToolTip(colour.isValid() ? tr("%1 – Delete removes it").arg(text) : text);
    setAccessibleDescription(text);
    update();
}

void ColourButton::choose()
{
    const auto chosen = QColorDialog::getColor(
        m_colour.isValid() ? m_colour : QColor(Qt::white), this, accessibleName(), QColorDialog::ShowAlphaChannel);
    if (chosen.isValid())
        emit colourChosen(chosen);
}

void ColourButton::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace)
        emit colourChosen({});
    else
        QToolButton::keyPressEvent(event);
}

void ColourButton::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto rect = QRectF(QWidget::rect()).adjusted(1, 1, -1, -1);
    const auto border = palette().color(hasFocus() ? QPalette::Highlight : QPalette::Mid);
    painter.setPen(QPen(border, hasFocus() ? 2 : 1));
    painter.setBrush(m_colour.alpha() < 255 || !m_colour.isValid()
            ? QBrush(palette().color(QPalette::Mid), Qt::Dense6Pattern)
            : QBrush());
    painter.drawRoundedRect(rect, 4, 4);
    if (m_colour.isValid()) {
        painter.setBrush(m_colour);
        painter.drawRoundedRect(rect, 4, 4);
    } else {
        painter.setPen(QPen(palette().color(QPalette::PlaceholderText), 1.2));
        painter.drawLine(rect.bottomLeft() + QPointF(4, -4), rect.topRight() + QPointF(-4, 4));
    }
}
