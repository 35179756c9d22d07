#include <relay/Forwarding.h>

#include <common/MonotonicClock.h>
#include <relay/HeaderFields.h>

#include <HeldRequest.h>
#include <ResponseHeader.h>

#include <QNetworkProxy>
#include <QNetworkRequest>

#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr qint64 maxAnswerBytes = 16'777'216; // 16 MiB
constexpr qint64 readAheadBytes = 1'048'576;  // the network's thread waits once it has so many
constexpr auto clientCheckInterval = 100ms;

/// The address at the target of what was asked for here. No path can lead to another host.
QUrl addressAt(const QUrl &target, const QString &path)
{
    const auto base = target.toString(QUrl::RemovePath | QUrl::RemoveQuery | QUrl::RemoveFragment |
                                      QUrl::RemoveUserInfo);
    return QUrl(base + (path.startsWith(u'/') ? path : u'/' + path));
}

QNetworkRequest requestTo(const QUrl &address, const RequestHeader &header, qint64 bodySize)
{
    QNetworkRequest request(address);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
    request.setHeader(QNetworkRequest::ContentLengthHeader, bodySize);
    request.setRawHeader("Accept-Encoding", "identity"); // unset, it would be asked for and undone
    const auto fields = endToEndFields(header);
    for (const auto &[name, value] : fields)
        request.setRawHeader(name.toUtf8(), value.toUtf8());
    return request;
}

/// An error that stands for a status is an answer like any other.
bool hasAnswer(const QNetworkReply &reply)
{
    const auto error = reply.error();
    const bool isOfTransport =
        (error != QNetworkReply::NoError && error < QNetworkReply::ContentAccessDenied) ||
        error == QNetworkReply::ContentReSendError || error == QNetworkReply::ProtocolFailure;
    return !isOfTransport && reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() != 0;
}

BasicHeader fieldsOf(const QNetworkReply &reply)
{
    BasicHeader header;
    const auto fields = reply.rawHeaderPairs();
    for (const auto &[name, value] : fields)
        header.addValue(QString::fromUtf8(name), QString::fromUtf8(value));
    return header;
}

} // namespace

Forwarding::Forwarding(std::shared_ptr<HeldRequest> request, Exchange exchange,
                       const RequestHeader &header, const QUrl &target,
                       std::chrono::milliseconds patience)
    : m_request(std::move(request)), m_exchange(std::move(exchange)), m_body(m_exchange.requestBody)
{
    m_network.setProxy(QNetworkProxy::NoProxy);
    send(header, target);
    m_patience.setSingleShot(true);
    connect(&m_patience, &QTimer::timeout, this,
            [this] { giveUp(QStringLiteral("the answer took too long")); });
    m_patience.start(patience);
    connect(&m_clientCheck, &QTimer::timeout, this, [this] {
        if (!m_request->isAwaited())
            giveUp(QStringLiteral("the client has gone"));
    });
    m_clientCheck.start(clientCheckInterval);
}

Forwarding::~Forwarding()
{
    m_reply->disconnect(this);
    m_request->drop();
}

void Forwarding::send(const RequestHeader &header, const QUrl &target)
{
    const auto request =
        requestTo(addressAt(target, header.path()), header, m_body.bytesAvailable());
    const auto method = header.method().toUtf8();
    m_reply.reset(method == "HEAD" ? m_network.head(request)
                                   : m_network.sendCustomRequest(request, method, &m_body));
    // Passed on to the network thread only once the request has started, in an event queued before.
    QMetaObject::invokeMethod(
        m_reply.get(), [reply = m_reply.get()] { reply->setReadBufferSize(readAheadBytes); },
        Qt::QueuedConnection);
    connect(m_reply.get(), &QIODevice::readyRead, this, &Forwarding::readAnswer);
    connect(m_reply.get(), &QNetworkReply::finished, this, &Forwarding::takeAnswer);
}

void Forwarding::readAnswer()
{
    m_exchange.answerBody += m_reply->readAll();
    if (m_exchange.answerBody.size() > maxAnswerBytes)
        giveUp(QStringLiteral("the answer is larger than %1 bytes").arg(maxAnswerBytes));
}

void Forwarding::takeAnswer()
{
    m_exchange.answerBody += m_reply->readAll();
    if (!hasAnswer(*m_reply)) {
        giveUp(m_reply->errorString());
        return;
    }
    m_exchange.status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    m_exchange.answerContentType = m_reply->rawHeader("Content-Type");
    end();

    ResponseHeader header;
    header.setStatusLine(m_exchange.status, {}, 1, 1);
    const auto fields = endToEndFields(fieldsOf(*m_reply));
    for (const auto &[name, value] : fields)
        header.addValue(name, value);
    m_request->answer(header, m_exchange.answerBody);
}

void Forwarding::giveUp(const QString &error)
{
    m_exchange.answerBody.clear();
    m_exchange.error = error;
    end();
    m_request->drop();
    m_reply->abort();
}

void Forwarding::end()
{
    m_patience.stop();
    m_clientCheck.stop();
    m_reply->disconnect(this);
    m_exchange.durationMs = monotonicMs() - m_exchange.startedMs;
    Q_EMIT ended(m_exchange);
}
