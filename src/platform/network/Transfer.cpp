#include "platform/network/Transfer.h"

#include "platform/network/CurlErrors.h"
#include "platform/network/HTTPMethods.h"
#include "platform/network/URLError.h"
#include "platform/network/URLPolicy.h"

#include <QFile>

#include <algorithm>
#include <iterator>
#include <limits>
#include <tuple>

using namespace Qt::StringLiterals;

namespace {

/// A longer body of a redirect is cut off, together with its connection.
constexpr qint64 largestRedirectBody = 64 * 1024;
/// Nothing that arrives begins such a watch anew.
constexpr qint64 noNumberOfBytes = std::numeric_limits<qint64>::max();

const char *nameOf(URLRequest::Method method)
{
    return std::find_if(std::begin(httpMethods), std::end(httpMethods), [method](const HTTPMethod &each) {
        return each.method == method;
    })->name;
}

/// The transfer library's value of a field without any is the end of its line.
QByteArray valueOf(const curl_header &field)
{
    return QByteArray(field.value).trimmed();
}

StallWatch::Clock::time_point now()
{
    return StallWatch::Clock::now();
}

} // namespace

Transfer::Transfer(URLRequest request, SessionConfiguration configuration, std::shared_ptr<TransferReceiver> receiver)
    : m_url(request.url)
    , m_request(std::move(request))
    , m_configuration(std::move(configuration))
    , m_receiver(std::move(receiver))
    , m_connectTimeout(m_request.timeoutInterval.value_or(m_configuration.connectTimeout))
    , m_connectWatch(m_connectTimeout, noNumberOfBytes)
    , m_stallWatch(m_request.timeoutInterval.value_or(m_configuration.stallTimeout), m_configuration.stallMinimumBytes)
    , m_wholeWatch(m_configuration.longestTransfer.value_or(std::chrono::milliseconds::max()), noNumberOfBytes)
    , m_error(refusalToFetch(m_url))
{ }

QString Transfer::host() const
{
    return m_url.scheme() + u"://"_s + m_url.authority(QUrl::FullyEncoded).section(u'@', -1);
}

bool Transfer::prepare()
{
    if (m_error)
        return false;
    if (m_handle)
        curl_easy_reset(m_handle.get());
    else
        m_handle.reset(curl_easy_init());
    if (!m_handle) {
        fail(transferError(CURLE_OUT_OF_MEMORY, m_url));
        return false;
    }
    m_stallWatch.pause();
    if (!m_connectWatch.isRunning()) { // else it is another attempt of the same request
        m_connectWatch.restart(now());
        m_hasSocket = false;
    }
    m_skipped = 0;
    m_headIsWhole = false;
    setRules();
    setCallbacks();
    return true;
}

void Transfer::setRules()
{
    CURL *handle = m_handle.get();
    const bool isPlain = m_url.scheme() == u"http"_s;
    curl_easy_setopt(handle, CURLOPT_URL, m_url.toEncoded(QUrl::RemoveFragment).constData());
    curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, isPlain ? "http" : "https");
    setRequest();
    curl_easy_setopt(handle, CURLOPT_FOLLOWLOCATION, 0L);
    curl_easy_setopt(handle, CURLOPT_USERAGENT, "KorvanPluginManager"); // some servers refuse who has none
    curl_easy_setopt(handle, CURLOPT_ACCEPT_ENCODING, ""); // everything that can be decoded
    curl_easy_setopt(handle, CURLOPT_SSLVERSION, long{CURL_SSLVERSION_TLSv1_2});
    // Many requests to one server wait for its first connection, which may turn out to carry all of them. Plain HTTP
    // never does, and waiting would put them one after the other.
    curl_easy_setopt(
        handle, CURLOPT_HTTP_VERSION, isPlain ? long{CURL_HTTP_VERSION_1_1} : long{CURL_HTTP_VERSION_2TLS});
    curl_easy_setopt(handle, CURLOPT_PIPEWAIT, isPlain ? 0L : 1L);
    curl_easy_setopt(handle, CURLOPT_CONNECTTIMEOUT_MS,
        static_cast<long>(std::clamp<qint64>(m_connectTimeout.count(), 1, std::numeric_limits<int>::max())));
    curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L); // signal handlers are the process's, not a library's
    // A lookup of a name that is given up must not hold up the thread until the system has given up too; it ends in the
    // background and frees what it has.
    curl_easy_setopt(handle, CURLOPT_QUICK_EXIT, 1L);
    if (isLoopback(m_url))
        curl_easy_setopt(handle, CURLOPT_PROXY, ""); // none, whatever the environment says
    if (!m_configuration.certificateAuthorityFile.isEmpty())
        curl_easy_setopt(
            handle, CURLOPT_CAINFO, QFile::encodeName(m_configuration.certificateAuthorityFile).constData());
}

void Transfer::setRequest()
{
    CURL *handle = m_handle.get();
    const bool hasBody = !m_request.body.isNull();
    curl_easy_setopt(handle, CURLOPT_NOBODY, m_request.method == URLRequest::Method::Head ? 1L : 0L);
    if (hasBody) {
        curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE, curl_off_t{m_request.body.size()});
        curl_easy_setopt(handle, CURLOPT_POSTFIELDS, m_request.body.constData());
    }
    if (hasBody || (m_request.method != URLRequest::Method::Get && m_request.method != URLRequest::Method::Head))
        curl_easy_setopt(handle, CURLOPT_CUSTOMREQUEST, nameOf(m_request.method));

    m_headers.reset();
    const auto add = [this](const QByteArray &line) {
        if (auto *const list = curl_slist_append(m_headers.get(), line.constData())) {
            std::ignore = m_headers.release(); // it is the list's beginning still
            m_headers.reset(list);
        }
    };
    if (hasBody) { // what the transfer library would add by itself
        add("Content-Type:");
        add("Expect:");
    }
    for (const auto &[name, value] : m_request.headers)
        add(value.isEmpty() ? name + ';' : name + ": " + value); // its notation for a field without a value
    curl_easy_setopt(handle, CURLOPT_HTTPHEADER, m_headers.get());
}

void Transfer::setCallbacks()
{
    CURL *handle = m_handle.get();
    curl_easy_setopt(handle, CURLOPT_PRIVATE, this);
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &Transfer::bodyArrives);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, this);
    curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, &Transfer::headerArrives);
    curl_easy_setopt(handle, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(handle, CURLOPT_SOCKOPTFUNCTION, &Transfer::connecting);
    curl_easy_setopt(handle, CURLOPT_SOCKOPTDATA, this);
    curl_easy_setopt(handle, CURLOPT_PREREQFUNCTION, &Transfer::connected);
    curl_easy_setopt(handle, CURLOPT_PREREQDATA, this);
}

/// The wait for another transfer's connection, which this one might have shared, does not count.
int Transfer::connecting(void *transfer, curl_socket_t, curlsocktype)
{
    auto &self = *static_cast<Transfer *>(transfer);
    if (!std::exchange(self.m_hasSocket, true))
        self.m_connectWatch.restart(now());
    return CURL_SOCKOPT_OK;
}

int Transfer::connected(void *transfer, char *, char *, int, int)
{
    auto &self = *static_cast<Transfer *>(transfer);
    self.m_connectWatch.pause();
    self.m_stallWatch.restart(now());
    if (!self.m_wholeWatch.isRunning())
        self.m_wholeWatch.restart(now());
    return CURL_PREREQFUNC_OK;
}

std::size_t Transfer::headerArrives(char *bytes, std::size_t size, std::size_t count, void *transfer)
{
    static_cast<Transfer *>(transfer)->takeHeader({bytes, static_cast<qsizetype>(size * count)});
    return size * count;
}

void Transfer::takeHeader(QByteArrayView line)
{
    m_stallWatch.received(line.size(), now());
    if (line.startsWith("HTTP/")) // also after a provisional head
        takeStatusLine(line);
    else if (line == "\r\n" || line == "\n")
        m_headIsWhole = true;
}

/// "HTTP/1.1 404 Not Found".
void Transfer::takeStatusLine(QByteArrayView line)
{
    m_headIsWhole = false;
    if (m_request.responseHeaders == URLRequest::ResponseHeaders::Drop)
        return;
    const auto status = line.indexOf(' ');
    const auto text = status < 0 ? status : line.indexOf(' ', status + 1);
    m_statusText = text < 0 ? QByteArray() : line.sliced(text + 1).trimmed().toByteArray();
}

std::size_t Transfer::bodyArrives(char *bytes, std::size_t size, std::size_t count, void *transfer)
{
    auto &self = *static_cast<Transfer *>(transfer);
    const QByteArrayView view(bytes, static_cast<qsizetype>(size * count));
    self.m_stallWatch.received(view.size(), now());
    const bool goOn = self.redirectLocation() ? self.skipRedirectBody(view) : self.takeBody(view);
    return goOn ? size * count : std::size_t{CURL_WRITEFUNC_ERROR};
}

bool Transfer::skipRedirectBody(QByteArrayView bytes)
{
    m_skipped += bytes.size();
    return m_skipped <= largestRedirectBody;
}

bool Transfer::takeBody(QByteArrayView bytes)
{
    const qint64 announced = contentLength();
    m_received += bytes.size();
    if (m_configuration.maximumSize && qMax(m_received, announced) > *m_configuration.maximumSize) {
        fail(urlError(URLErrorCode::DataTooLarge, m_url));
        return false;
    }
    // An encoded body has another size than the one that is announced.
    if (auto error = m_receiver->receive(bytes, header("Content-Encoding") ? -1 : announced))
        fail(*std::move(error));
    return !m_error;
}

qint64 Transfer::contentLength() const
{
    curl_off_t length = -1;
    curl_easy_getinfo(m_handle.get(), CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &length);
    return length;
}

int Transfer::statusCode() const
{
    long status = 0;
    curl_easy_getinfo(m_handle.get(), CURLINFO_RESPONSE_CODE, &status);
    return static_cast<int>(status);
}

std::optional<QByteArray> Transfer::header(const char *name) const
{
    curl_header *found = nullptr;
    if (curl_easy_header(m_handle.get(), name, 0, CURLH_HEADER, -1, &found) != CURLHE_OK)
        return {};
    return valueOf(*found);
}

std::optional<QByteArray> Transfer::redirectLocation() const
{
    if (m_request.redirects == URLRequest::Redirects::Answer)
        return {};
    switch (statusCode()) {
    case 301:
    case 302:
    case 303:
    case 307:
    case 308:
        return header("Location");
    default:
        return {};
    }
}

Transfer::Next Transfer::requestEnded(CURLcode code)
{
    if (code == CURLE_OK && !m_headIsWhole) // which the transfer library takes for an answer without body
        code = CURLE_PARTIAL_FILE;
    m_response = {m_url, statusCode(), responseHeaders(), m_statusText};
    if (m_error)
        return Next::Finish;
    if (code == CURLE_OPERATION_TIMEDOUT && wasOnlyBusy())
        return Next::Request;
    const auto location = redirectLocation();
    if (location && (code == CURLE_OK || m_skipped > largestRedirectBody))
        return follow(*location);
    if (code != CURLE_OK)
        fail(transferError(code, m_url));
    return Next::Finish;
}

/// The transfer library counts the time that this thread has spent elsewhere.
bool Transfer::wasOnlyBusy() const
{
    const auto time = now();
    return m_connectWatch.isRunning() && m_connectWatch.deadline(time) > time;
}

Transfer::Next Transfer::follow(const QByteArray &location)
{
    const QUrl target = redirectTarget(m_url, location);
    if (++m_redirects > m_configuration.maximumRedirects)
        fail(urlError(URLErrorCode::TooManyRedirects, m_url));
    else if (auto refusal = refusalToFollow(m_url, target))
        fail(*std::move(refusal));
    else
        changeRequestFor(target);
    return m_error ? Next::Finish : Next::Request;
}

/// As browsers do: a form that was sent is answered by a page to be fetched, and what was meant for one host stays
/// there.
void Transfer::changeRequestFor(const QUrl &target)
{
    using Method = URLRequest::Method;
    const int status = statusCode();
    const bool wasPosted = (status == 301 || status == 302) && m_request.method == Method::Post;
    const bool isSeeOther = status == 303 && m_request.method != Method::Get && m_request.method != Method::Head;
    const bool isOtherHost = m_url.scheme() != target.scheme() || m_url.authority() != target.authority();
    if (wasPosted || isSeeOther) {
        m_request.method = Method::Get;
        m_request.body = {};
    }
    m_request.headers.removeIf([&](const auto &field) {
        const auto &name = field.first;
        const bool isOfBody = isHeaderNamed(name, "Content-Type") || isHeaderNamed(name, "Content-Encoding")
            || isHeaderNamed(name, "Content-Language") || isHeaderNamed(name, "Content-Location");
        const bool isSecret = isHeaderNamed(name, "Authorization") || isHeaderNamed(name, "Cookie");
        return (isOfBody && (wasPosted || isSeeOther)) || (isSecret && isOtherHost);
    });
    m_url = target;
}

HTTPHeaders Transfer::responseHeaders() const
{
    HTTPHeaders fields;
    if (m_request.responseHeaders == URLRequest::ResponseHeaders::Drop)
        return fields;
    curl_header *field = nullptr;
    while ((field = curl_easy_nextheader(m_handle.get(), CURLH_HEADER, -1, field)))
        fields.append({QByteArray(field->name), valueOf(*field)});
    return fields;
}

bool Transfer::wasMultiplexing() const
{
    long version = 0;
    curl_easy_getinfo(m_handle.get(), CURLINFO_HTTP_VERSION, &version);
    return version >= CURL_HTTP_VERSION_2_0;
}

void Transfer::fail(KRError error)
{
    if (!m_error)
        m_error = std::move(error);
}

void Transfer::finish()
{
    m_receiver->finish(m_response, m_error);
}
