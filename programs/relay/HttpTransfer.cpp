#include <relay/HttpTransfer.h>

#include <AnswerHead.h>

#include <QUrl>

#include <curl/curl.h>

#include <memory>
#include <new>

namespace {

constexpr qsizetype maxBodyBytes = 16'777'216; // 16 MiB
constexpr int pollMs = 1000;                   // how late libcurl may look at its own deadlines

struct CloseHandle
{
    void operator()(CURL *handle) const { curl_easy_cleanup(handle); }
};
struct CloseMulti
{
    void operator()(CURLM *multi) const { curl_multi_cleanup(multi); }
};
struct FreeList
{
    void operator()(curl_slist *list) const { curl_slist_free_all(list); }
};
using CurlHandle = std::unique_ptr<CURL, CloseHandle>;
using CurlMulti = std::unique_ptr<CURLM, CloseMulti>;
using CurlList = std::unique_ptr<curl_slist, FreeList>;

void append(CurlList &list, const QByteArray &line)
{
    auto *extended = curl_slist_append(list.get(), line.constData());
    if (extended == nullptr)
        throw std::bad_alloc();
    (void)list.release();
    list.reset(extended);
}

CurlList toCurlList(const QList<BasicHeader::Field> &fields)
{
    CurlList list;
    BasicHeader given;
    for (const auto &[name, value] : fields) {
        given.addValue(name, value);
        append(list, name.toUtf8() + (value.isEmpty() ? ";" : ": " + value.toUtf8()));
    }
    for (const auto *ownField : {"Accept", "Content-Type", "Expect"}) { // which libcurl would add
        if (given.value(QLatin1String(ownField)).isNull())
            append(list, QByteArray(ownField) + ':');
    }
    return list;
}

/// The answer as it comes in.
struct Reception
{
    HttpAnswer answer;
    AnswerHead head;

    bool isTooLarge() const { return head.isTooLarge() || answer.body.size() > maxBodyBytes; }
};

std::size_t onHeader(const char *data, std::size_t size, std::size_t count, void *self)
{
    auto &reception = *static_cast<Reception *>(self);
    const std::size_t bytes = size * count;
    const QByteArray line(data, static_cast<qsizetype>(bytes));
    if (!reception.head.take(line))
        return 0;
    const auto colon = line.indexOf(':');
    if (reception.head.isFirstLine())
        reception.answer.header = {}; // what came before was of an interim answer
    else if (colon > 0)
        reception.answer.header.addValue(QString::fromUtf8(line.left(colon)),
                                         QString::fromUtf8(line.mid(colon + 1).trimmed()));
    return bytes;
}

std::size_t onBody(const char *data, std::size_t size, std::size_t count, void *self)
{
    auto &reception = *static_cast<Reception *>(self);
    const std::size_t bytes = size * count;
    reception.answer.body.append(data, static_cast<qsizetype>(bytes));
    return reception.isTooLarge() ? 0 : bytes;
}

CurlHandle createHandle()
{
    static const auto initialised = curl_global_init(CURL_GLOBAL_DEFAULT); // once, and kept
    CurlHandle handle(initialised == CURLE_OK ? curl_easy_init() : nullptr);
    if (!handle)
        throw std::bad_alloc();
    curl_easy_setopt(handle.get(), CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(handle.get(), CURLOPT_QUICK_EXIT, 1L); // no wait for a name
    curl_easy_setopt(handle.get(), CURLOPT_PROXY, "");
    curl_easy_setopt(handle.get(), CURLOPT_PROTOCOLS_STR, "http");
    curl_easy_setopt(handle.get(), CURLOPT_HTTP_VERSION, CURL_HTTP_VERSION_1_1);
    curl_easy_setopt(handle.get(), CURLOPT_HEADERFUNCTION, &onHeader);
    curl_easy_setopt(handle.get(), CURLOPT_WRITEFUNCTION, &onBody);
    return handle;
}

void setRequest(CURL *handle, const HttpRequest &request)
{
    curl_easy_setopt(handle, CURLOPT_URL, request.server.constData());
    curl_easy_setopt(handle, CURLOPT_REQUEST_TARGET, request.path.constData());
    if (request.method == "HEAD") {
        curl_easy_setopt(handle, CURLOPT_NOBODY, 1L);
    } else if (request.method != "GET" || !request.body.isEmpty()) {
        curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE_LARGE,
                         static_cast<curl_off_t>(request.body.size()));
        curl_easy_setopt(handle, CURLOPT_POSTFIELDS, request.body.constData());
        curl_easy_setopt(handle, CURLOPT_CUSTOMREQUEST, request.method.constData());
    }
}

/// As curl_easy_perform, but ends at once when a stop is requested.
CURLcode perform(CURL *handle, const std::stop_token &stop)
{
    const CurlMulti multi(curl_multi_init());
    if (!multi || curl_multi_add_handle(multi.get(), handle) != CURLM_OK)
        throw std::bad_alloc();
    int running = 1;
    {
        const std::stop_callback wakeUp(stop, [&] { curl_multi_wakeup(multi.get()); });
        while (!stop.stop_requested() && curl_multi_perform(multi.get(), &running) == CURLM_OK &&
               running > 0)
            curl_multi_poll(multi.get(), nullptr, 0, pollMs, nullptr);
    }
    int left = 0;
    const auto *message = curl_multi_info_read(multi.get(), &left);
    const auto code = message == nullptr ? CURLE_ABORTED_BY_CALLBACK : message->data.result;
    curl_multi_remove_handle(multi.get(), handle);
    return code;
}

} // namespace

QByteArray serverOf(const QUrl &url)
{
    return url.toEncoded(QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment |
                         QUrl::RemoveUserInfo);
}

HttpAnswer transfer(const HttpRequest &request, std::chrono::milliseconds patience,
                    const std::stop_token &stop)
{
    Reception reception;
    const auto handle = createHandle();
    const auto fields = toCurlList(request.fields);
    setRequest(handle.get(), request);
    curl_easy_setopt(handle.get(), CURLOPT_HTTPHEADER, fields.get());
    curl_easy_setopt(handle.get(), CURLOPT_TIMEOUT_MS, static_cast<long>(patience.count()));
    curl_easy_setopt(handle.get(), CURLOPT_HEADERDATA, &reception);
    curl_easy_setopt(handle.get(), CURLOPT_WRITEDATA, &reception);
    const auto ended = perform(handle.get(), stop);
    long status = 0;
    curl_easy_getinfo(handle.get(), CURLINFO_RESPONSE_CODE, &status);
    const auto code = reception.head.judge(ended, status);

    HttpAnswer failure;
    if (reception.isTooLarge())
        failure.error = QStringLiteral("the answer is too large");
    else if (code == CURLE_UNSUPPORTED_PROTOCOL)
        failure.error = QStringLiteral("the answer is not HTTP");
    else if (code == CURLE_PARTIAL_FILE)
        failure.error = QStringLiteral("the answer broke off");
    else if (code != CURLE_OK)
        failure.error = QString::fromUtf8(curl_easy_strerror(code));
    if (!failure.error.isEmpty())
        return failure;
    reception.answer.status = static_cast<int>(status);
    return reception.answer;
}
