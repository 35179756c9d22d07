#include <RestClient.h>

#include "AvailabilityLog.h"

#include <AnswerHead.h>
#include <MockFactoryDefinition.h>

#include <log4qt/logger.h>

#include <curl/curl.h>

#include <poll.h>

#include <algorithm>
#include <mutex>
#include <new>

template class MockFactory<RestClient>;

namespace {

constexpr int defaultTimeoutSeconds = 30;
constexpr std::size_t maxAnswerBytes = std::size_t{1024} * 1024;

struct CloseHandle
{
    void operator()(CURL *handle) const { curl_easy_cleanup(handle); }
};
struct FreeList
{
    void operator()(curl_slist *list) const { curl_slist_free_all(list); }
};
using CurlHandle = std::unique_ptr<CURL, CloseHandle>;
using CurlList = std::unique_ptr<curl_slist, FreeList>;

/// libcurl's global state is set up once and kept: the process may use it elsewhere too.
void initialiseOnce()
{
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

void append(CurlList &list, const QByteArray &line)
{
    if (auto *extended = curl_slist_append(list.get(), line.constData())) {
        (void)list.release();
        list.reset(extended);
    }
}

CurlList toCurlList(const RestClient::Headers &headers)
{
    CurlList list;
    for (auto header = headers.cbegin(); header != headers.cend(); ++header)
        append(list, header.key().toUtf8() + ": " + header.value().toUtf8());
    append(list, "Expect:"); // no pause before the body
    return list;
}

bool isSuccess(long status)
{
    return status / 100 == 2;
}

} // namespace

/// One kept libcurl handle, with its connection, and the tallies of the request under way.
class RestClient::Transfer
{
public:
    Transfer();

    int perform(const QUrl &url, const QByteArray &body, const Headers &headers);

    std::chrono::seconds timeout{defaultTimeoutSeconds};
    int result = 0;
    AvailabilityLog availability;
    const Log4Qt::Logger *logger = nullptr;
    QString alias;
    bool compactLogs = true;

private:
    void startAnew();
    bool hasUnaskedInput() const;
    bool isRequestSent() const;
    bool mayAnswerAnotherRequest() const;
    long status() const;

    static int beforeRequest(void *self, char *, char *, int, int);
    static std::size_t onHeader(const char *data, std::size_t size, std::size_t count, void *self);
    static std::size_t onAnswer(const char *, std::size_t size, std::size_t count, void *self);

    QString failureText(CURLcode code) const;

    Headers m_headers;
    CurlList m_fields; // m_headers as libcurl wants them
    CurlHandle m_handle;
    int m_requests = 0;        // sent for the post under way
    qsizetype m_bodyBytes = 0; // of it
    bool m_isEarly = false;    // answered before it was sent
    AnswerHead m_head;
    std::size_t m_answerBytes = 0;
};

RestClient::Transfer::Transfer()
{
    initialiseOnce();
    startAnew();
}

/// With no connection.
void RestClient::Transfer::startAnew()
{
    CurlHandle created(curl_easy_init());
    if (!created)
        throw std::bad_alloc();
    m_handle = std::move(created);

    CURL *handle = m_handle.get();
    curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(handle, CURLOPT_QUICK_EXIT, 1L); // no wait for a name beyond the deadline
    curl_easy_setopt(handle, CURLOPT_PROXY, "");
    curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(handle, CURLOPT_FOLLOWLOCATION, 0L);
    curl_easy_setopt(handle, CURLOPT_HTTP_VERSION, CURL_HTTP_VERSION_1_1);
    curl_easy_setopt(handle, CURLOPT_MAXCONNECTS, 1L); // the one that hasUnaskedInput looks at
    curl_easy_setopt(handle, CURLOPT_POST, 1L);
    curl_easy_setopt(handle, CURLOPT_PREREQFUNCTION, &Transfer::beforeRequest);
    curl_easy_setopt(handle, CURLOPT_PREREQDATA, this);
    curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, &Transfer::onHeader);
    curl_easy_setopt(handle, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &Transfer::onAnswer);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, this);
}

int RestClient::Transfer::perform(const QUrl &url, const QByteArray &body, const Headers &headers)
{
    m_requests = 0;
    m_bodyBytes = body.size();
    m_isEarly = false;
    m_head = {};
    m_answerBytes = 0;

    if (hasUnaskedInput())
        startAnew();
    CURL *handle = m_handle.get();
    const QByteArray address = url.toEncoded();
    if (!m_fields || headers != m_headers) { // the same ones, post after post
        m_fields = toCurlList(headers);
        m_headers = headers;
    }
    const auto deadline = std::chrono::milliseconds(timeout).count();
    curl_easy_setopt(handle, CURLOPT_URL, address.constData());
    curl_easy_setopt(handle, CURLOPT_HTTPHEADER, m_fields.get());
    curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    curl_easy_setopt(handle, CURLOPT_POSTFIELDS, body.constData());
    curl_easy_setopt(handle, CURLOPT_TIMEOUT_MS, static_cast<long>(deadline));
    // What a TLS library has read ahead of a kept connection cannot be seen.
    curl_easy_setopt(handle, CURLOPT_FORBID_REUSE, url.scheme() == u"https" ? 1L : 0L);

    CURLcode code = curl_easy_perform(handle);
    curl_easy_setopt(handle, CURLOPT_POSTFIELDS, nullptr);

    // libcurl says so of other first lines that are not HTTP, and guesses the status of some.
    if (!m_head.isHttp() || (code == CURLE_OK && m_head.status() != status()))
        code = CURLE_UNSUPPORTED_PROTOCOL;
    else if (code == CURLE_OK && !m_head.isWhole())
        code = CURLE_PARTIAL_FILE;
    else if (code == CURLE_OK && isSuccess(status()) && !isRequestSent())
        m_isEarly = true;
    if (m_isEarly)
        code = CURLE_SEND_ERROR;

    if (code != CURLE_OK)
        result = code;
    else
        result = isSuccess(status()) ? 0 : static_cast<int>(status());

    if (result == 0)
        availability.succeeded();
    else
        availability.failed(failureText(code));
    if (!compactLogs && logger != nullptr)
        logger->debug(QStringLiteral("%1: POST %2, %3 байт: %4")
                          .arg(alias, url.toString(), QString::number(body.size()),
                               result == 0 ? QString::number(status()) : failureText(code)));
    return result;
}

/// Whether something waits on the kept connection before it has been asked for: an answer too many,
/// which libcurl would take for that of the next request, or the connection's end.
bool RestClient::Transfer::hasUnaskedInput() const
{
    curl_socket_t socket = CURL_SOCKET_BAD;
    curl_easy_getinfo(m_handle.get(), CURLINFO_ACTIVESOCKET, &socket);
    pollfd kept{.fd = socket, .events = POLLIN, .revents = 0};
    return socket != CURL_SOCKET_BAD && poll(&kept, 1, 0) > 0;
}

bool RestClient::Transfer::isRequestSent() const
{
    curl_off_t sent = 0;
    curl_easy_getinfo(m_handle.get(), CURLINFO_SIZE_UPLOAD_T, &sent);
    return sent >= m_bodyBytes;
}

/// A server may take a message before it has read it. On a kept connection such an answer may as
/// well be one too many to the request before: it ends the connection, and the next attempt has its
/// own.
bool RestClient::Transfer::mayAnswerAnotherRequest() const
{
    if (!m_head.isWhole() || !isSuccess(status()) || isRequestSent())
        return false;
    long newConnections = 0;
    curl_easy_getinfo(m_handle.get(), CURLINFO_NUM_CONNECTS, &newConnections);
    return newConnections == 0;
}

long RestClient::Transfer::status() const
{
    long status = 0;
    curl_easy_getinfo(m_handle.get(), CURLINFO_RESPONSE_CODE, &status);
    return status;
}

/// libcurl calls this before each request it sends. When a kept connection turns out to be dead it
/// would send the request again on a new one, although the server may have acted on the first.
int RestClient::Transfer::beforeRequest(void *self, char *, char *, int, int)
{
    auto &transfer = *static_cast<Transfer *>(self);
    ++transfer.m_requests;
    return transfer.m_requests == 1 ? CURL_PREREQFUNC_OK : CURL_PREREQFUNC_ABORT;
}

std::size_t RestClient::Transfer::onHeader(const char *data, std::size_t size, std::size_t count,
                                           void *self)
{
    auto &transfer = *static_cast<Transfer *>(self);
    const std::size_t bytes = size * count;
    const bool isFine = transfer.m_head.take({data, static_cast<qsizetype>(bytes)});
    transfer.m_isEarly = transfer.m_isEarly || transfer.mayAnswerAnotherRequest();
    return isFine && !transfer.m_isEarly ? bytes : 0;
}

std::size_t RestClient::Transfer::onAnswer(const char *, std::size_t size, std::size_t count,
                                           void *self)
{
    auto &transfer = *static_cast<Transfer *>(self);
    transfer.m_answerBytes += size * count;
    return transfer.m_answerBytes <= maxAnswerBytes ? size * count : 0;
}

QString RestClient::Transfer::failureText(CURLcode code) const
{
    if (code == CURLE_OK)
        return QStringLiteral("ответ HTTP %1").arg(status());
    if (m_requests > 1)
        return QStringLiteral("соединение закрыто без ответа");
    if (m_isEarly)
        return QStringLiteral("ответ раньше запроса");
    if (m_head.isTooLarge() || m_answerBytes > maxAnswerBytes)
        return QStringLiteral("слишком большой ответ");
    if (m_requests > 0 && code == CURLE_UNSUPPORTED_PROTOCOL)
        return QStringLiteral("ответ не по протоколу HTTP");
    if (code == CURLE_OPERATION_TIMEDOUT)
        return QStringLiteral("нет ответа за %1 с").arg(timeout.count());
    return QString::fromUtf8(curl_easy_strerror(code));
}

RestClient::RestClient() : m_transfer(std::make_unique<Transfer>()) {}

RestClient::~RestClient() = default;

void RestClient::setLogger(const Log4Qt::Logger *logger)
{
    m_transfer->logger = logger;
    m_transfer->availability.setLogger(logger);
}

void RestClient::setTargetAlias(const QString &alias)
{
    m_transfer->alias = alias;
    m_transfer->availability.setServer(alias);
}

void RestClient::setCompactLogs(bool compact)
{
    m_transfer->compactLogs = compact;
}

void RestClient::setRequestTimeout(int seconds)
{
    m_transfer->timeout = std::chrono::seconds(std::max(1, seconds));
}

int RestClient::requestTimeout() const
{
    return static_cast<int>(m_transfer->timeout.count());
}

int RestClient::post(const QUrl &url, const QByteArray &body, const Headers &headers)
{
    return m_transfer->perform(url, body, headers);
}

int RestClient::result() const
{
    return m_transfer->result;
}
