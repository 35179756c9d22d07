#pragma once

#include <AnswerHead.h>
#include <RestClient.h>

#include <curl/curl.h>

#include <chrono>
#include <memory>

/**
 * Posts by libcurl and judges the answer, of which libcurl would take for a success what is none:
 * what is no HTTP, breaks off, comes too early, or was meant for another request.
 *
 * Owner: the RestClient. Thread: that of the client, which waits in `send`. Errors: only a lack of
 * memory throws; `send` returns what went wrong and `failure` says it.
 * Shut-down: the destructor closes the connection.
 */
class HttpPost
{
public:
    HttpPost();
    Q_DISABLE_COPY_MOVE(HttpPost)

    /// Returns 0 for a success, otherwise the status of the answer, or libcurl's code below 100.
    int send(const QUrl &url, const QByteArray &body, const RestClient::Headers &headers,
             std::chrono::seconds timeout);

    /// Why the last one failed, in words for the log.
    QString failure() const;
    /// Of the last answer.
    long status() const;

private:
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

    static void append(CurlList &list, const QByteArray &line);
    static CurlList toCurlList(const RestClient::Headers &headers);

    void startAnew();
    void setRequest(const QUrl &url, const QByteArray &body, const RestClient::Headers &headers);
    void judgeAnswer();
    bool hasUnaskedInput() const;
    bool isRequestSent() const;
    bool mayAnswerAnotherRequest() const;

    static int beforeRequest(void *self, char *, char *, int, int);
    static std::size_t onHeader(const char *data, std::size_t size, std::size_t count, void *self);
    static std::size_t onAnswer(const char *, std::size_t size, std::size_t count, void *self);

    RestClient::Headers m_headers;
    CurlList m_fields; // m_headers as libcurl wants them
    QUrl m_server;     // whose connection is kept
    CurlHandle m_handle;
    CURLcode m_code = CURLE_OK; // of the request under way, or the last one, as all that follows
    std::chrono::seconds m_timeout{};
    int m_requests = 0; // sent for it
    qsizetype m_bodyBytes = 0;
    bool m_isEarly = false; // answered before it was sent
    AnswerHead m_head;
    std::size_t m_answerBytes = 0;
};
