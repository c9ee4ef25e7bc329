#pragma once

#include "hosting/HostingOptions.h"
#include "platform/LTAppEnvironment.h"
#include "platform/UserDefaults.h"

#include <memory>

/// The host that the framework sees, as the options describe it: its version, folders and settings.
class ConfiguredEnvironment : public LTAppEnvironment
{
public:
    explicit ConfiguredEnvironment(const HostingOptions &options);
    ~ConfiguredEnvironment() override;

    QString bundleShortVersion() const override;
    QUrl mainBundleResourcesFolder() const override;
    QUrl applicationSupportFolder() const override;
    QString blocklistEndpoint() const override;
    UserDefaults &userDefaults() override { return *m_defaults; }

private:
    HostingOptions m_options;
    std::unique_ptr<UserDefaults> m_defaults;
};
