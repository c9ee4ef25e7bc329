#pragma once

#include "commands/services/ServiceContext.h"
#include "platform/MainQueue.h"
#include "platform/UserPresenter.h"
#include "platform/script/ScriptValue.h"

#include <functional>
#include <list>
#include <map>
#include <memory>

/// "host:user-interface": lets a command's scripts talk with the user, through
/// the application's presenter. All of it is taken away when the session ends.
class UserInterfaceService final : public ScriptObject
{
public:
    explicit UserInterfaceService(ServiceContext context);
    ~UserInterfaceService() override;

    void showMessage(const QString &text);
    // Each calls `done` later with the answer, null for none.
    void ask(const QVariantMap &options, const QVariant &done);
    void askText(const QVariantMap &options, const QVariant &done);
    void askNumber(const QVariantMap &options, const QVariant &done);
    void askChoice(const QVariantMap &options, const QVariant &done);
    /// The script's handle of something that takes a while.
    ScriptObjectPointer showProgress(const QVariantMap &options, const QVariant &cancelled);

    /// Calls `done` once the application has drawn, and heard its user.
    void pause(const QVariant &done);

    const ScriptClass &scriptClass() const override;

private:
    class Progress;

    struct Waiting
    {
        std::shared_ptr<void> keepsRunning;
        std::unique_ptr<Presentation> presentation;
    };

    struct Pause
    {
        std::shared_ptr<void> keepsRunning;
        std::unique_ptr<ScheduledCall> call;
    };

    template <class Answer>
    using Show = std::function<std::unique_ptr<Presentation>(UserPresenter &, UserPresenter::Callback<Answer>)>;

    template <class Answer>
    void present(const UserMessage &message, const QVariant &done, const Show<Answer> &show);
    void finish(int id, const ScriptValue &done, const QVariant &answer);
    template <class Message>
    Message messageFrom(const QVariantMap &options) const;
    QString sender() const;
    void forget(const Progress *progress);

    ServiceContext m_context;
    std::map<int, Waiting> m_waiting;
    std::map<int, Pause> m_pauses;
    int m_latest = 0;
    std::list<std::shared_ptr<Progress>> m_progresses;
    /// Tells callbacks whether this object still exists.
    std::shared_ptr<char> m_life;
};
