#pragma once

#include "CommandLineEnvironment.h"
#include "document/Document.h"
#include "hosting/LogCollector.h"
#include "platform/OpenDocuments.h"
#include "platform/VirtualMainQueue.h"
#include "testing/ScriptedNetwork.h"
#include "testing/ScriptedUser.h"

#include <QTemporaryDir>

#include <functional>
#include <memory>

/// The application that one test sees: in force for as long as it lives, with folders and settings of its own, one open
/// document, a clock, a user and servers that do what the test says. Main thread only.
class TestHost final : public CommandLineEnvironment, public OpenDocuments
{
public:
    /// Scripts are stopped when they have computed for so many seconds. `complain` is told of what the test has no
    /// answer for.
    TestHost(const GlobalOptions &options, double timeLimit, std::function<void(const QString &)> complain);
    ~TestHost() override;

    VirtualMainQueue &clock() { return m_queue; }
    ScriptedUser &user() { return m_user; }
    ScriptedNetwork &network() { return m_network; }
    const std::shared_ptr<Document> &document() const { return m_document; }
    void setDocument(std::shared_ptr<Document> document) { m_document = std::move(document); }
    /// The service "testing".
    void setTestingService(const ScriptObjectPointer &service) { m_testingService = service; }

    MainQueue &mainQueue() override { return m_queue; }
    UserPresenter *userPresenter() override { return &m_user; }
    OpenDocuments *openDocuments() override { return this; }
    QVariant scriptService(const QString &name, const std::shared_ptr<ScriptHost> &host,
        const std::shared_ptr<ScriptObject> &owner) override;

    QList<ScriptObjectPointer> documents() const override { return {m_document}; }
    ScriptObjectPointer activeDocument() const override { return m_document; }

private:
    static GlobalOptions ownOptions(GlobalOptions options, const QString &folder, double timeLimit);
    TestHost(const GlobalOptions &options, std::unique_ptr<QTemporaryDir> folder, double timeLimit,
        std::function<void(const QString &)> complain);

    std::unique_ptr<QTemporaryDir> m_folder;
    VirtualMainQueue m_queue;
    ScriptedUser m_user;
    ScriptedNetwork m_network;
    std::shared_ptr<Document> m_document = std::make_shared<Document>();
    std::weak_ptr<ScriptObject> m_testingService;
    Installation m_installation;
};
