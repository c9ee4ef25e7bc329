#include "platform/services/FetchService.h"

#include "platform/LTAppEnvironment.h"
#include "platform/network/HTTPMethods.h"
#include "platform/network/URLError.h"
#include "platform/script/ScriptClass.h"
#include "platform/script/ScriptException.h"

#include <algorithm>
#include <utility>

namespace {

URLRequest::Method methodNamed(const QString &name)
{
    for (const auto &each : httpMethods) {
        if (name == QLatin1StringView(each.name))
            return each.method;
    }
    const auto message =
        QStringLiteral("fetch cannot use the method \"%1\". Use GET, HEAD, POST, PUT, PATCH, DELETE or OPTIONS.");
    throw ScriptException(message.arg(name));
}

/// Fields that say how bytes travel, which is for the transfer to say.
bool isOfTheConnection(const QByteArray &name)
{
    static constexpr const char *names[] = {"Connection", "Content-Length", "Expect", "Host", "Keep-Alive",
        "Proxy-Authorization", "Proxy-Connection", "TE", "Trailer", "Transfer-Encoding", "Upgrade"};
    return std::any_of(
        std::begin(names), std::end(names), [&](const char *other) { return isHeaderNamed(name, other); });
}

HTTPHeaders headersFrom(const QVariantList &pairs)
{
    HTTPHeaders headers;
    for (const auto &pair : pairs) {
        const auto parts = pair.toList();
        const auto name = parts.value(0).toString().toUtf8();
        const auto value = parts.value(1).toString().toLatin1();
        if (!isSendableHeader(name, value))
            throw ScriptException(QStringLiteral("fetch cannot send the header \"%1\": its name or value has "
                                                 "characters that headers must not have.")
                                      .arg(QString::fromUtf8(name)));
        if (!isOfTheConnection(name))
            headers.append({name, value});
    }
    return headers;
}

URLRequest requestFrom(const QVariantMap &description)
{
    URLRequest request;
    request.url = QUrl(description.value(QStringLiteral("url")).toString(), QUrl::StrictMode);
    request.method = methodNamed(description.value(QStringLiteral("method")).toString());
    request.headers = headersFrom(description.value(QStringLiteral("headers")).toList());
    request.responseHeaders = URLRequest::ResponseHeaders::Keep;
    if (description.value(QStringLiteral("redirect")).toString() != u"follow")
        request.redirects = URLRequest::Redirects::Answer;
    if (const auto body = description.value(QStringLiteral("body")); body.typeId() == QMetaType::QByteArray) {
        request.body = body.toByteArray();
        if (request.body.isNull())
            request.body = QByteArrayLiteral("");
    }
    return request;
}

URLSession session()
{
    auto configuration = SessionConfiguration::defaultSessionConfiguration();
    configuration.maximumSize = FetchService::largestAnswer;
    return URLSession(configuration);
}

/// What the author of the script can do about an error; empty when there is nothing.
QString adviceFor(URLErrorCode code)
{
    switch (code) {
    case URLErrorCode::PlainHTTPNotAllowed:
    case URLErrorCode::UnsupportedURL:
    case URLErrorCode::BadURL:
        return QStringLiteral(" Use a URL that begins with \"https://\".");
    case URLErrorCode::DataTooLarge:
        return QStringLiteral(" Ask for less: an answer may have 64 MB.");
    case URLErrorCode::CannotFindHost:
        return QStringLiteral(" Check the server's name, and whether this computer is connected to the network.");
    case URLErrorCode::CannotConnectToHost:
    case URLErrorCode::NetworkConnectionLost:
    case URLErrorCode::TimedOut:
        return QStringLiteral(" Check whether the server is running, or try again later.");
    case URLErrorCode::SecureConnectionFailed:
    case URLErrorCode::CertificateUntrusted:
        return QStringLiteral(" Check the server's certificate.");
    case URLErrorCode::TooManyRedirects:
        return QStringLiteral(" Ask for the address that the server leads to in the end.");
    default:
        return {};
    }
}

/// Null when there is no error.
QVariant describe(const std::optional<KRError> &error)
{
    return error ? QVariant(error->localizedDescription + adviceFor(URLErrorCode(error->code)))
                 : QVariant::fromValue(nullptr);
}

QVariantMap describe(const QByteArray &body, const URLResponse &response)
{
    QVariantList headers;
    for (const auto &[name, value] : response.headers)
        headers.append(QVariant(QVariantList{QString::fromLatin1(name), QString::fromLatin1(value)}));
    return {
        {QStringLiteral("url"), QString::fromUtf8(response.url.toEncoded())},
        {QStringLiteral("status"), response.statusCode},
        {QStringLiteral("statusText"), QString::fromLatin1(response.statusText)},
        {QStringLiteral("headers"), headers},
        {QStringLiteral("body"), body},
    };
}

} // namespace

FetchService::~FetchService()
{
    for (const auto &[number, request] : m_requests)
        request.task->cancel();
}

double FetchService::start(const QVariantMap &request, const QVariant &callback)
{
    const auto host = m_host.lock();
    if (!host || host->isEnded())
        throw ScriptException(QStringLiteral("The script's session has ended."));
    const auto number = ++m_latestNumber;
    const auto weakSelf = std::weak_ptr(std::static_pointer_cast<FetchService>(shared_from_this()));
    const auto completion = [weakSelf, number](const QByteArray &body, const URLResponse &response,
                                const std::optional<KRError> &error) {
        LTAppEnvironment::runOnMainQueue([weakSelf, number, body, response, error] {
            if (const auto self = weakSelf.lock())
                self->finish(number, body, response, error);
        });
    };
    const auto task = session().dataTaskWithRequest(requestFrom(request), completion);
    m_requests.emplace(number, Request{task, callback.value<ScriptValue>(), host->keepRunning()});
    task->resume();
    return double(number);
}

void FetchService::cancel(double number)
{
    const auto found = m_requests.find(quint64(number));
    if (found == m_requests.end())
        return;
    const auto request = std::move(found->second);
    m_requests.erase(found);
    request.task->cancel();
}

void FetchService::finish(
    quint64 number, const QByteArray &body, const URLResponse &response, const std::optional<KRError> &error)
{
    const auto found = m_requests.find(number);
    if (found == m_requests.end()) // cancelled meanwhile
        return;
    const auto request = std::move(found->second); // which keeps the session running until its script knows
    m_requests.erase(found);
    request.callback.call({describe(error), describe(body, response)});
}

const ScriptClass &FetchService::scriptClass() const
{
    static constexpr ScriptOperation operations[] = {
        scriptOperation<&FetchService::start>("start", "(request: Record<string, unknown>, answered: Function)"),
        scriptOperation<&FetchService::cancel>("cancel", "(number)"),
    };
    static constexpr ScriptClass description{"FetchService", operations};
    return description;
}
