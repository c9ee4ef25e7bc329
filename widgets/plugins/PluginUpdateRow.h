#pragma once

#include "widgets/plugins/PluginUpdateState.h"

#include <QWidget>

class QProgressBar;
class QPushButton;
class ToneLabel;

/// How far the update of one plug-in has come: a sentence, a progress bar, and what can be done about it. Hidden while
/// there is nothing to say.
class PluginUpdateRow final : public QWidget
{
    Q_OBJECT

public:
    explicit PluginUpdateRow(QWidget *parent = nullptr);

    void setState(const PluginUpdateState &state);

signals:
    void updateRequested();
    void cancelRequested();

private:
    ToneLabel *m_text;
    QProgressBar *m_bar;
    QPushButton *m_update;
    QPushButton *m_cancel;
};

/// The state as a sentence for the user; empty when there is nothing to say.
QString updateText(const PluginUpdateState &state);
