#pragma once

#include <QDoubleSpinBox>

/// A number that the user may change. Only what the user does is told, once it is done.
class NumberField final : public QDoubleSpinBox
{
    Q_OBJECT

public:
    NumberField(const QString &name, double minimum, double maximum, QWidget *parent = nullptr);

    /// As a value of the layer; not told.
    void showValue(double value);

signals:
    void edited(double value);

protected:
    /// Passing by with the wheel changes nothing: only where the focus is.
    void wheelEvent(QWheelEvent *event) override;
    /// Without the zeros at the end.
    QString textFromValue(double value) const override;

private:
    bool m_isShowing = false;
};
