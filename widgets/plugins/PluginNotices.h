#pragma once

#include "widgets/Tones.h"

#include <QWidget>

class Banner;

/// What the window for plug-ins says above its list, one banner below the other.
class PluginNotices final : public QWidget
{
    Q_OBJECT

public:
    explicit PluginNotices(QWidget *parent = nullptr);

    /// In place of what was said before.
    void say(const QString &text, Tone tone);
    /// So many plug-ins were disabled as incompatible.
    void showIncompatibleCount(qint64 count);
    void showAllDisabled(bool areAllDisabled);

signals:
    void enableAgainRequested();

private:
    Banner *m_incompatible;
    Banner *m_allDisabled;
    Banner *m_notice;
};
