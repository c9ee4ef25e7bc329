#pragma once

#include "Options.h"
#include "TerminalPresenter.h"
#include "hosting/ConfiguredEnvironment.h"

/// The host that the framework sees: this program, as its options describe it.
class CommandLineEnvironment : public ConfiguredEnvironment, public LogTarget
{
public:
    explicit CommandLineEnvironment(const GlobalOptions &options);
    ~CommandLineEnvironment() override;

    /// Loader errors go to standard error, as the system's log does.
    LogTarget *logTarget() override { return this; }
    /// On standard error, with answers from standard input.
    UserPresenter *userPresenter() override { return &m_presenter; }
    void log(const QVariantMap &entry, const QString &from) override;
    void systemLog(const QString &line) override;

private:
    TerminalPresenter m_presenter;
};
