#pragma once

#include <QColor>
#include <QToolButton>

/// Shows a colour and has the user choose another one.
class ColourButton final : public QToolButton
{
    Q_OBJECT

public:
    explicit ColourButton(const QString &name, QWidget *parent = nullptr);

    /// Invalid: none.
    void setColour(const QColor &colour);
    QColor colour() const { return m_colour; }

signals:
    /// The user has chosen it; invalid for none.
    void colourChosen(const QColor &colour);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void choose();

    QColor m_colour;
};
