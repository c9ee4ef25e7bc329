#include "ScriptedNetwork.h"

#include "platform/LTAppEnvironment.h"
#include "platform/script/ScriptClass.h"
#include "platform/script/ScriptValue.h"

#include <QSet>

class ScriptedNetwork::Service final : public ScriptObject
{
public:
    Service(std::shared_ptr<State> state, const std::shared_ptr<ScriptHost> &host)
        : m_state(std::move(state))
        , m_host(host)
    { }

    double start(const QVariantMap &request, const QVariant &callback)
    {
        const auto number = ++m_latestNumber;
        m_pending.insert(number);
        m_state->requests.append(QVariant::fromValue(noted(request)));
        const auto answer = answerTo(request);
        const auto host = m_host.lock();
        LTAppEnvironment::runOnMainQueue(
            [self = weak_from_this(), number, answer, callback, keptRunning = host ? host->keepRunning() : nullptr] {
                const auto service = std::static_pointer_cast<Service>(self.lock());
                if (service && service->m_pending.remove(number))
                    callback.value<ScriptValue>().call(answer);
            });
        return number;
    }

    void cancel(double number) { m_pending.remove(int(number)); }

    const ScriptClass &scriptClass() const override
    {
        static constexpr ScriptOperation operations[] = {
            scriptOperation<&Service::start>("start", "(request: object, answered: Function)"),
            scriptOperation<&Service::cancel>("cancel", "(number)"),
        };
        static constexpr ScriptClass description{"FetchService", operations};
        return description;
    }

private:
    static QVariantMap noted(QVariantMap request)
    {
        request.remove(QStringLiteral("redirect"));
        const auto body = request.value(QStringLiteral("body"));
        request.insert(QStringLiteral("body"), QString::fromUtf8(body.toByteArray()));
        return request;
    }

    /// Why it has failed (null when it has not), and the response.
    QVariantList answerTo(const QVariantMap &request) const
    {
        const auto url = request.value(QStringLiteral("url")).toString();
        const auto found = m_state->answers.constFind(url);
        if (found == m_state->answers.constEnd()) {
            return {QStringLiteral("The test has no answer for it. Say network.answer(\"%1\", …) before.").arg(url),
                QVariantMap()};
        }
        const auto error = found->value(QStringLiteral("error"));
        if (error.typeId() == QMetaType::QString)
            return {error, QVariantMap()};
        auto response = *found;
        response.insert(QStringLiteral("url"), url);
        response.insert(QStringLiteral("body"), found->value(QStringLiteral("body")).toString().toUtf8());
        return {QVariant::fromValue(nullptr), response};
    }

    std::shared_ptr<State> m_state;
    std::weak_ptr<ScriptHost> m_host;
    QSet<int> m_pending;
    int m_latestNumber = 0;
};

void ScriptedNetwork::setAnswer(const QString &url, const QVariantMap &answer)
{
    m_state->answers.insert(url, answer);
}

ScriptObjectPointer ScriptedNetwork::serviceFor(const std::shared_ptr<ScriptHost> &host) const
{
    return std::make_shared<Service>(m_state, host);
}
