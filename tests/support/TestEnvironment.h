#pragma once

#include "platform/LTAppEnvironment.h"
#include "platform/NotificationCenter.h"
#include "platform/OpenDocuments.h"
#include "platform/UserDefaults.h"
#include "platform/UserPresenter.h"
#include "platform/VirtualMainQueue.h"

#include <QHash>
#include <QImage>
#include <QList>
#include <QPair>
#include <QStringList>
#include <QTemporaryDir>

/// A log target that remembers.
class RecordingLogTarget final : public LogTarget
{
public:
    void log(const QVariantMap &entry, const QString &from) override { entries.append({from, entry}); }

    /// The texts of all entries.
    QStringList texts() const;

    QList<QPair<QString, QVariantMap>> entries;
};

/// A host made for one test: its own folders, settings and time, in force for as long as it lives.
class TestEnvironment final : public LTAppEnvironment
{
public:
    TestEnvironment();
    ~TestEnvironment() override;

    QString bundleShortVersion() const override { return version; }
    QUrl mainBundleResourcesFolder() const override;
    QUrl applicationSupportFolder() const override;
    QString blocklistEndpoint() const override { return endpoint; }
    quint32 executableArchitecture() const override { return architecture; }
    QImage imageNamed(const QString &name) const override { return images.value(name); }
    QVariant scriptService(
        const QString &name, const std::shared_ptr<ScriptHost> &, const std::shared_ptr<ScriptObject> &owner) override
    {
        serviceOwner = owner;
        return services.value(name);
    }
    LogTarget *logTarget() override { return target; }
    AlertPresenter *alertPresenter() override { return presenter; }
    UserPresenter *userPresenter() override { return user; }
    OpenDocuments *openDocuments() override { return documents; }
    void systemLog(const QString &line) override { systemLogLines.append(line); }
    ScriptTimeLimitDecision scriptExceededTimeLimit(const QString &name, double seconds) override;
    UserDefaults &userDefaults() override { return m_defaults; }
    NotificationCenter &notificationCenter() override { return m_notificationCenter; }
    MainQueue &mainQueue() override { return queue; }

    /// A path inside the test's temporary folder.
    QString path(const QString &relativePath) const { return m_folder.filePath(relativePath); }

    QString version = QStringLiteral("98.3");
    QString endpoint = QStringLiteral("https://blocklist.invalid");
    /// 64-bit x86.
    quint32 architecture = 0x01000007;
    /// Null: nobody shows alerts.
    AlertPresenter *presenter = nullptr;
    /// Null: nobody talks with the user.
    UserPresenter *user = nullptr;
    /// Null: no documents are open.
    OpenDocuments *documents = nullptr;
    /// The application's pictures by their names.
    QHash<QString, QImage> images;
    /// The application's own services for core modules, and whose session has last asked for one.
    QHash<QString, QVariant> services;
    std::shared_ptr<ScriptObject> serviceOwner;
    /// Null: nobody takes messages for the user.
    LogTarget *target = nullptr;
    QStringList systemLogLines;
    VirtualMainQueue queue;
    /// Answers for scripts that run too long; the last one stands for all further questions.
    QList<ScriptTimeLimitDecision> timeLimitDecisions{ScriptTimeLimitDecision::Stop};
    QStringList timeLimitQuestions;

private:
    QTemporaryDir m_folder;
    UserDefaults m_defaults;
    NotificationCenter m_notificationCenter;
    Installation m_installation;
};
