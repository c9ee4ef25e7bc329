#pragma once

#include "widgets/Tones.h"

#include <QFrame>

class QLabel;
class QPushButton;
class QToolButton;

/// A line above a list that says something until it is dismissed.
class Banner final : public QFrame
{
    Q_OBJECT

public:
    enum class Dismissal { Offered, NotOffered };

    Banner(Tone tone, Dismissal dismissal, QWidget *parent = nullptr);

    /// Shows it.
    void say(const QString &text);
    void say(const QString &text, Tone tone);
    /// A button with this text; without a call there is none.
    void setAction(const QString &text);

signals:
    void actionRequested();
    void dismissed();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Tone m_tone;
    QLabel *m_text;
    QPushButton *m_action;
    QToolButton *m_close;
};
