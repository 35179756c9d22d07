#include <doctor/HttpExchange.h>

#include <AnswerHead.h>

#include <curl/curl.h>

#include <cerrno>
#include <memory>
#include <new>

namespace doctor {

namespace {

constexpr long maxRedirects = 5;
constexpr int firstFinalStatus = 200; // those before it are interim

struct CloseHandle
{
    void operator()(CURL *handle) const { curl_easy_cleanup(handle); }
};
using CurlHandle = std::unique_ptr<CURL, CloseHandle>;

struct FreeList
{
    void operator()(curl_slist *list) const { curl_slist_free_all(list); }
};
using CurlList = std::unique_ptr<curl_slist, FreeList>;

/// What has arrived, and how much of it may.
struct Arrival
{
    HttpAnswer &answer;
    qsizetype maxBodyBytes;
    AnswerHead head;
};

std::size_t takeHeader(const char *data, std::size_t size, std::size_t count, void *self)
{
    auto &arrival = *static_cast<Arrival *>(self);
    const std::size_t bytes = size * count;
    return arrival.head.take({data, static_cast<qsizetype>(bytes)}) ? bytes : 0;
}

std::size_t takeBody(const char *bytes, std::size_t size, std::size_t count, void *self)
{
    const auto &arrival = *static_cast<Arrival *>(self);
    auto &answer = arrival.answer;
    const auto length = static_cast<qsizetype>(size) * static_cast<qsizetype>(count);
    if (answer.body.size() + length > arrival.maxBodyBytes) {
        answer.isCutOff = true;
        return 0;
    }
    answer.body.append(bytes, length);
    return size * count;
}

Milliseconds timeOf(CURL *handle, CURLINFO info)
{
    curl_off_t microseconds = 0;
    curl_easy_getinfo(handle, info, &microseconds);
    return std::chrono::microseconds(microseconds);
}

QString textOf(CURL *handle, CURLINFO info)
{
    const char *text = nullptr;
    curl_easy_getinfo(handle, info, &text);
    return QString::fromLatin1(text);
}

QMap<QByteArray, QByteArray> fieldsOf(CURL *handle)
{
    QMap<QByteArray, QByteArray> fields;
    curl_header *field = nullptr;
    while ((field = curl_easy_nextheader(handle, CURLH_HEADER, -1, field)) != nullptr)
        fields.insert(QByteArray(field->name).toLower(), field->value);
    return fields;
}

Outcome failedConnection(CURL *handle)
{
    long error = 0;
    curl_easy_getinfo(handle, CURLINFO_OS_ERRNO, &error);
    return error == ECONNREFUSED ? Outcome::Refused : Outcome::Unreachable;
}

/// The time of a step that was not done is 0.
Outcome timedOutAt(CURL *handle)
{
    const auto isDone = [=](CURLINFO time) { return timeOf(handle, time).count() > 0; };
    if (!isDone(CURLINFO_NAMELOOKUP_TIME_T))
        return Outcome::NameUnknown;
    return isDone(CURLINFO_CONNECT_TIME_T) ? Outcome::AnswerTimedOut : Outcome::ConnectTimedOut;
}

Outcome outcomeOf(CURL *handle, CURLcode code, const HttpAnswer &answer)
{
    const bool isComplete = code == CURLE_OK || (code == CURLE_WRITE_ERROR && answer.isCutOff);
    if (isComplete && answer.status >= firstFinalStatus)
        return Outcome::Answered;
    switch (code) {
    case CURLE_COULDNT_RESOLVE_HOST:
        return Outcome::NameUnknown;
    case CURLE_COULDNT_CONNECT:
        return failedConnection(handle);
    case CURLE_OPERATION_TIMEDOUT:
        return timedOutAt(handle);
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CERTPROBLEM:
        return Outcome::TlsFailed;
    case CURLE_UNSUPPORTED_PROTOCOL: // the first line is not HTTP
    case CURLE_WEIRD_SERVER_REPLY:
        return Outcome::NotHttp;
    case CURLE_GOT_NOTHING:
    case CURLE_PARTIAL_FILE:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
        return Outcome::Closed;
    default:
        return Outcome::Other;
    }
}

} // namespace

QDateTime HttpAnswer::date() const
{
    const auto field = fields.value("date");
    const auto seconds = curl_getdate(field.constData(), nullptr);
    return seconds < 0 ? QDateTime() : QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC);
}

HttpAnswer exchange(const HttpRequest &request)
{
    const CurlHandle owned(curl_easy_init());
    if (!owned)
        throw std::bad_alloc();
    CURL *handle = owned.get();
    HttpAnswer answer;
    Arrival arrival{answer, request.maxBodyBytes, {}};
    const QByteArray address = request.url.toEncoded(QUrl::RemoveFragment);
    curl_easy_setopt(handle, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(handle, CURLOPT_QUICK_EXIT, 1L); // no wait for a name beyond the deadline
    curl_easy_setopt(handle, CURLOPT_PROXY, "");
    curl_easy_setopt(handle, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(handle, CURLOPT_HTTP_VERSION, CURL_HTTP_VERSION_1_1);
    curl_easy_setopt(handle, CURLOPT_URL, address.constData());
    curl_easy_setopt(handle, CURLOPT_TIMEOUT_MS, static_cast<long>(request.timeout.count()));
    curl_easy_setopt(handle, CURLOPT_HEADERFUNCTION, &takeHeader);
    curl_easy_setopt(handle, CURLOPT_HEADERDATA, &arrival);
    curl_easy_setopt(handle, CURLOPT_WRITEFUNCTION, &takeBody);
    curl_easy_setopt(handle, CURLOPT_WRITEDATA, &arrival);
    const CurlList json(curl_slist_append(nullptr, "Content-Type: application/json"));
    if (request.json) {
        curl_easy_setopt(handle, CURLOPT_HTTPHEADER, json.get());
        curl_easy_setopt(handle, CURLOPT_POSTFIELDSIZE, static_cast<long>(request.json->size()));
        curl_easy_setopt(handle, CURLOPT_POSTFIELDS, request.json->constData());
        curl_easy_setopt(handle, CURLOPT_FOLLOWLOCATION, 1L);
        curl_easy_setopt(handle, CURLOPT_MAXREDIRS, maxRedirects);
        curl_easy_setopt(handle, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    }

    const auto ended = curl_easy_perform(handle);
    long status = 0;
    curl_easy_getinfo(handle, CURLINFO_RESPONSE_CODE, &status);
    const auto code = arrival.head.judge(ended, status);
    answer.status = static_cast<int>(status);
    answer.connectTime = timeOf(handle, CURLINFO_CONNECT_TIME_T);
    answer.firstByteTime = timeOf(handle, CURLINFO_STARTTRANSFER_TIME_T);
    answer.peer = textOf(handle, CURLINFO_PRIMARY_IP);
    answer.fields = fieldsOf(handle);
    answer.outcome = outcomeOf(handle, code, answer);
    if (answer.outcome != Outcome::Answered)
        answer.status = 0; // that of an answer which broke off
    answer.problem = QString::fromUtf8(curl_easy_strerror(code));
    return answer;
}

Text reasonOf(const HttpAnswer &answer)
{
    switch (answer.outcome) {
    case Outcome::Answered:
        return Text("ответ HTTP %1", "HTTP answer %1").with(answer.status);
    case Outcome::NameUnknown:
        return {"имя сервера не найдено", "the name of the server is unknown"};
    case Outcome::Refused:
        return {"соединение отклонено: на этом порту никто не слушает",
                "the connection is refused: nobody listens on this port"};
    case Outcome::Unreachable:
        return {"до этого компьютера нет пути в сети", "there is no way to this machine"};
    case Outcome::ConnectTimedOut:
        return {"компьютер не откликается", "the machine does not react"};
    case Outcome::AnswerTimedOut:
        return {"соединение принято, но ответа нет", "the connection is taken and never answered"};
    case Outcome::TlsFailed:
        return Text("шифрованное соединение не установлено (%1)",
                    "there is no encrypted connection (%1)")
            .with(answer.problem);
    case Outcome::NotHttp:
        return {"ответ не по протоколу HTTP", "the answer is not HTTP"};
    case Outcome::Closed:
        return {"соединение закрыто до конца ответа",
                "the connection is closed before the end of the answer"};
    case Outcome::Other:
        break;
    }
    return Text("обмен не удался (%1)", "the exchange failed (%1)").with(answer.problem);
}

Text remedyOf(const HttpAnswer &answer, const Text &start)
{
    switch (answer.outcome) {
    case Outcome::NameUnknown:
        return {"Проверьте имя в адресе или укажите вместо него IP-адрес; проверьте сеть и DNS.",
                "Check the name in the address or give the IP address instead; check network and "
                "DNS."};
    case Outcome::Refused:
        return Text("Программа не запущена или порт в адресе другой. %1",
                    "The program does not run, or the port is another. %1")
            .with(start);
    case Outcome::Unreachable:
    case Outcome::ConnectTimedOut:
        return {"Проверьте, что компьютер включён и в сети, адрес верен, а брандмауэр пропускает "
                "этот порт.",
                "Check that the machine is on and in the network, that the address is right, and "
                "that the firewall lets this port through."};
    case Outcome::AnswerTimedOut:
        return Text("Программа на этом порту зависла или перегружена. %1",
                    "The program on this port hangs or is overloaded. %1")
            .with(start);
    case Outcome::TlsFailed:
        return {"Проверьте, нужен ли в адресе https, и сертификат сервера.",
                "Check whether the address needs https, and the server's certificate."};
    case Outcome::NotHttp:
    case Outcome::Closed:
    case Outcome::Answered:
    case Outcome::Other:
        break;
    }
    return {"Похоже, на этом порту другая программа: проверьте адрес и порт.",
            "There seems to be another program on this port: check address and port."};
}

} // namespace doctor
