#pragma once

#include "Options.h"
#include "TerminalPresenter.h"
#include "platform/LTAppEnvironment.h"
#include "platform/UserDefaults.h"

#include <memory>

/// The host that the framework sees: this program, as its options describe it.
class CommandLineEnvironment : public LTAppEnvironment, public LogTarget
{
public:
    explicit CommandLineEnvironment(const GlobalOptions &options);
    ~CommandLineEnvironment() override;

    QString bundleShortVersion() const override;
    QUrl mainBundleResourcesFolder() const override;
    QUrl applicationSupportFolder() const override;
    QString blocklistEndpoint() const override;
    UserDefaults &userDefaults() override { return *m_defaults; }
    /// Loader errors go to standard error, as the system's log does.
    LogTarget *logTarget() override { return this; }
    /// On standard error, with answers from standard input.
    UserPresenter *userPresenter() override { return &m_presenter; }
    void log(const QVariantMap &entry, const QString &from) override;
    void systemLog(const QString &line) override;

private:
    GlobalOptions m_options;
    std::unique_ptr<UserDefaults> m_defaults;
    TerminalPresenter m_presenter;
};
