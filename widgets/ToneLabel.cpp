#include "widgets/ToneLabel.h"

#include <QEvent>

ToneLabel::ToneLabel(std::optional<Tone> tone, QWidget *parent)
    : QLabel(parent)
    , m_tone(tone)
{
    setTextFormat(Qt::PlainText);
    apply();
}

void ToneLabel::setTone(std::optional<Tone> tone)
{
    m_tone = tone;
    apply();
}

void ToneLabel::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && !m_isApplying)
        apply();
}

void ToneLabel::apply()
{
    m_isApplying = true;
    QPalette own; // all else comes from around it
    if (m_tone)
        own.setColor(QPalette::WindowText, toneColor(*m_tone, palette()));
    setPalette(m_tone ? own : QPalette());
    m_isApplying = false;
}
