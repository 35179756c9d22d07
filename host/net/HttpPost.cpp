#include "HttpPost.h"

#include <poll.h>

#include <mutex>
#include <new>

namespace {

constexpr std::size_t maxAnswerBytes = std::size_t{1024} * 1024;

/// libcurl's global state is set up once and kept: the process may use it elsewhere too.
void initialiseOnce()
{
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

bool isSuccess(long status)
{
    return status / 100 == 2;
}

} // namespace

HttpPost::HttpPost()
{
    initialiseOnce();
    startAnew();
}

/// With no connection.
void HttpPost::startAnew()
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
    curl_easy_setopt(handle, CURLOPT_POST, 1L);
    curl_easy_setopt(handle, CURLOPT_PREREQFUNCTION, &HttpPost::beforeRequest);
    curl_easy_setopt(handle, CURLOPT_PREREQDATA, this);
    curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, &HttpPost::onHeader);
    curl_easy_setopt(handle, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &HttpPost::onAnswer);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, this);
}

int HttpPost::send(const QUrl &url, const QByteArray &body, const RestClient::Headers &headers,
                   std::chrono::seconds timeout)
{
    m_timeout = timeout;
    m_requests = 0;
    m_bodyBytes = body.size();
    m_isEarly = false;
    m_head = {};
    m_answerBytes = 0;

    // Of another server no connection is kept, on which something might come unseen.
    const auto server = url.adjusted(QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment);
    if (server != m_server || hasUnaskedInput())
        startAnew();
    m_server = server;
    setRequest(url, body, headers);
    m_code = curl_easy_perform(m_handle.get());
    curl_easy_setopt(m_handle.get(), CURLOPT_POSTFIELDS, nullptr);
    judgeAnswer();
    if (m_code != CURLE_OK)
        return m_code;
    return isSuccess(status()) ? 0 : static_cast<int>(status());
}

void HttpPost::setRequest(const QUrl &url, const QByteArray &body,
                          const RestClient::Headers &headers)
{
    CURL *handle = m_handle.get();
    const QByteArray address = url.toEncoded();
    if (!m_fields || headers != m_headers) { // the same ones, post after post
        m_fields = toCurlList(headers);
        m_headers = headers;
    }
    const auto deadline = std::chrono::milliseconds(m_timeout).count();
    curl_easy_setopt(handle, CURLOPT_URL, address.constData());
    curl_easy_setopt(handle, CURLOPT_HTTPHEADER, m_fields.get());
    curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    curl_easy_setopt(handle, CURLOPT_POSTFIELDS, body.constData());
    curl_easy_setopt(handle, CURLOPT_TIMEOUT_MS, static_cast<long>(deadline));
    // What a TLS library has read ahead of a kept connection cannot be seen.
    curl_easy_setopt(handle, CURLOPT_FORBID_REUSE, url.scheme() == u"https" ? 1L : 0L);
}

void HttpPost::judgeAnswer()
{
    m_code = m_head.judge(m_code, status());
    if (m_code == CURLE_OK && isSuccess(status()) && !isRequestSent())
        m_isEarly = true;
    if (m_isEarly)
        m_code = CURLE_SEND_ERROR;
}

void HttpPost::append(CurlList &list, const QByteArray &line)
{
    if (auto *extended = curl_slist_append(list.get(), line.constData())) {
        (void)list.release();
        list.reset(extended);
    }
}

HttpPost::CurlList HttpPost::toCurlList(const RestClient::Headers &headers)
{
    CurlList list;
    for (auto header = headers.cbegin(); header != headers.cend(); ++header)
        append(list, header.key().toUtf8() + ": " + header.value().toUtf8());
    append(list, "Expect:"); // no pause before the body
    return list;
}

/// Whether something waits on the kept connection before it has been asked for: an answer too many,
/// which libcurl would take for that of the next request, or the connection's end.
bool HttpPost::hasUnaskedInput() const
{
    curl_socket_t socket = CURL_SOCKET_BAD;
    curl_easy_getinfo(m_handle.get(), CURLINFO_ACTIVESOCKET, &socket);
    pollfd kept{.fd = socket, .events = POLLIN, .revents = 0};
    return socket != CURL_SOCKET_BAD && poll(&kept, 1, 0) > 0;
}

bool HttpPost::isRequestSent() const
{
    curl_off_t sent = 0;
    curl_easy_getinfo(m_handle.get(), CURLINFO_SIZE_UPLOAD_T, &sent);
    return sent >= m_bodyBytes;
}

/// A server may take a message before it has read it. On a kept connection such an answer may as
/// well be one too many to the request before: it ends the connection, and the next attempt has its
/// own.
bool HttpPost::mayAnswerAnotherRequest() const
{
    if (!m_head.isWhole() || !isSuccess(status()) || isRequestSent())
        return false;
    long newConnections = 0;
    curl_easy_getinfo(m_handle.get(), CURLINFO_NUM_CONNECTS, &newConnections);
    return newConnections == 0;
}

long HttpPost::status() const
{
    long status = 0;
    curl_easy_getinfo(m_handle.get(), CURLINFO_RESPONSE_CODE, &status);
    return status;
}

/// libcurl calls this before each request it sends. When a kept connection turns out to be dead it
/// would send the request again on a new one, although the server may have acted on the first.
int HttpPost::beforeRequest(void *self, char *, char *, int, int)
{
    auto &post = *static_cast<HttpPost *>(self);
    ++post.m_requests;
    return post.m_requests == 1 ? CURL_PREREQFUNC_OK : CURL_PREREQFUNC_ABORT;
}

std::size_t HttpPost::onHeader(const char *data, std::size_t size, std::size_t count, void *self)
{
    auto &post = *static_cast<HttpPost *>(self);
    const std::size_t bytes = size * count;
    const bool isFine = post.m_head.take({data, static_cast<qsizetype>(bytes)});
    post.m_isEarly = post.mayAnswerAnotherRequest();
    return isFine && !post.m_isEarly ? bytes : 0;
}

std::size_t HttpPost::onAnswer(const char *, std::size_t size, std::size_t count, void *self)
{
    auto &post = *static_cast<HttpPost *>(self);
    post.m_answerBytes += size * count;
    return post.m_answerBytes <= maxAnswerBytes ? size * count : 0;
}

QString HttpPost::failure() const
{
    if (m_code == CURLE_OK)
        return QStringLiteral("ответ HTTP %1").arg(status());
    if (m_requests > 1)
        return QStringLiteral("соединение закрыто без ответа");
    if (m_isEarly)
        return QStringLiteral("ответ раньше запроса");
    if (m_head.isTooLarge() || m_answerBytes > maxAnswerBytes)
        return QStringLiteral("слишком большой ответ");
    if (m_requests > 0 && m_code == CURLE_UNSUPPORTED_PROTOCOL)
        return QStringLiteral("ответ не по протоколу HTTP");
    if (m_code == CURLE_OPERATION_TIMEDOUT)
        return QStringLiteral("нет ответа за %1 с").arg(m_timeout.count());
    return QString::fromUtf8(curl_easy_strerror(m_code));
}
