#pragma once

#include "widgets/Tones.h"

#include <QLabel>

#include <optional>

/// Plain text in the colour of a tone, also when the palette turns from light to dark.
class ToneLabel final : public QLabel
{
    Q_OBJECT

public:
    explicit ToneLabel(std::optional<Tone> tone = std::nullopt, QWidget *parent = nullptr);

    /// Nil: as other labels.
    void setTone(std::optional<Tone> tone);

protected:
    void changeEvent(QEvent *event) override;

private:
    void apply();

    std::optional<Tone> m_tone;
    bool m_isApplying = false;
};
