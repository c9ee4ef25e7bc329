#include "panels/NumberField.h"

#include <QScopedValueRollback>
#include <QWheelEvent>

NumberField::NumberField(const QString &name, double minimum, double maximum, QWidget *parent)
    : QDoubleSpinBox(parent)
{
    setAccessibleName(name);
    setRange(minimum, maximum);
    setDecimals(2);
    setKeyboardTracking(false);
    setGroupSeparatorShown(false);
    setButtonSymbols(NoButtons);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumWidth(56);
    connect(this, &QDoubleSpinBox::valueChanged, this, [this](double value) {
        if (!m_isShowing)
            emit edited(value);
    });
}

void NumberField::showValue(double value)
{
    const QScopedValueRollback guard(m_isShowing, true);
    setValue(value);
}

void NumberField::wheelEvent(QWheelEvent *event)
{
    if (hasFocus())
        QDoubleSpinBox::wheelEvent(event);
    else
        event->ignore();
}

QString NumberField::textFromValue(double value) const
{
    auto text = locale().toString(value, 'f', decimals());
    if (text.contains(locale().decimalPoint())) {
        while (text.endsWith(locale().zeroDigit()))
            text.chop(1);
        if (text.endsWith(locale().decimalPoint()))
            text.chop(locale().decimalPoint().size());
    }
    return text.remove(locale().groupSeparator());
}
