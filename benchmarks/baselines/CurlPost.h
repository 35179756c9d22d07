#pragma once

#include <QByteArray>

#include <curl/curl.h>

#include <cstddef>
#include <memory>
#include <string>

namespace bench {

/// libcurl as its manual shows it: one kept handle, `curl_easy_perform` for each post. Blocks the
/// caller. Throws std::runtime_error unless the answer is 200.
class CurlPost
{
public:
    explicit CurlPost(const std::string &url);

    void operator()(const QByteArray &body);
    /// Of the latest answer.
    const QByteArray &answer() const { return m_answer; }
    /// A header field of the latest answer; empty if there is none.
    QByteArray field(const char *name) const;

private:
    static std::size_t onAnswer(const char *data, std::size_t size, std::size_t count, void *self);

    struct Cleanup
    {
        void operator()(CURL *handle) const { curl_easy_cleanup(handle); }
        void operator()(curl_slist *list) const { curl_slist_free_all(list); }
    };
    std::unique_ptr<curl_slist, Cleanup> m_fields;
    std::unique_ptr<CURL, Cleanup> m_handle;
    QByteArray m_answer;
};

} // namespace bench
