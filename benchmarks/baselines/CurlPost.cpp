#include <baselines/CurlPost.h>

#include <stdexcept>

namespace bench {

namespace {

curl_slist *jsonFields()
{
    curl_slist *fields = nullptr;
    for (const auto *field :
         {"Accept: application/json", "Content-Type: application/json", "Expect:"})
        fields = curl_slist_append(fields, field);
    return fields;
}

} // namespace

CurlPost::CurlPost(const std::string &url) : m_fields(jsonFields()), m_handle(curl_easy_init())
{
    CURL *handle = m_handle.get();
    curl_easy_setopt(handle, CURLOPT_URL, url.c_str());
    curl_easy_setopt(handle, CURLOPT_PROXY, "");
    curl_easy_setopt(handle, CURLOPT_POST, 1L);
    curl_easy_setopt(handle, CURLOPT_HTTPHEADER, m_fields.get());
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &CurlPost::onAnswer);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, this);
}

void CurlPost::operator()(const QByteArray &body)
{
    m_answer.clear();
    CURL *handle = m_handle.get();
    curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(body.size()));
    curl_easy_setopt(handle, CURLOPT_POSTFIELDS, body.constData());
    long status = 0;
    if (curl_easy_perform(handle) != CURLE_OK ||
        curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &status) != CURLE_OK || status != 200)
        throw std::runtime_error("the post failed");
}

QByteArray CurlPost::field(const char *name) const
{
    curl_header *header = nullptr;
    return curl_easy_header(m_handle.get(), name, 0, CURLH_HEADER, -1, &header) == CURLHE_OK
               ? QByteArray(header->value)
               : QByteArray();
}

std::size_t CurlPost::onAnswer(const char *data, std::size_t size, std::size_t count, void *self)
{
    static_cast<CurlPost *>(self)->m_answer.append(data, static_cast<qsizetype>(size * count));
    return size * count;
}

} // namespace bench
