#pragma once

#include "manager/RunningCommand.h"

#include <QWidget>

class QLabel;

/// One running command. Its name is the plug-in's own text.
class RunningCommandRow final : public QWidget
{
    Q_OBJECT

public:
    explicit RunningCommandRow(const RunningCommand &command, QWidget *parent = nullptr);

    const KRPluginCommandSpecifier &specifier() const { return m_specifier; }
    void setAge(std::chrono::milliseconds age);

signals:
    void stopRequested();

private:
    KRPluginCommandSpecifier m_specifier;
    QLabel *m_age;
};

/// "0:07", "12:34", "1:02:03".
QString ageText(std::chrono::milliseconds age);
