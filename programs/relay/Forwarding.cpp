#include <relay/Forwarding.h>

#include <common/MonotonicClock.h>
#include <relay/HeaderFields.h>

#include <HeldRequest.h>
#include <ResponseHeader.h>

#include <utility>

namespace {

constexpr std::chrono::milliseconds clientCheckInterval(100);

} // namespace

Forwarding::Forwarding(std::shared_ptr<HeldRequest> held, Exchange exchange,
                       const HttpRequest &request, std::chrono::milliseconds patience,
                       QObject *parent)
    : QObject(parent), m_held(std::move(held)), m_exchange(std::move(exchange))
{
    connect(&m_clientCheck, &QTimer::timeout, this, &Forwarding::giveUpIfNobodyWaits);
    m_clientCheck.start(clientCheckInterval);
    m_thread = std::jthread([this, request, patience](const std::stop_token &stop) {
        auto answer = transfer(request, patience, stop);
        QMetaObject::invokeMethod(
            this, [this, answer = std::move(answer)] { takeAnswer(answer); }, Qt::QueuedConnection);
    });
}

Forwarding::~Forwarding()
{
    m_held->drop();
}

void Forwarding::takeAnswer(const HttpAnswer &answer)
{
    m_clientCheck.stop();
    m_exchange.durationMs = monotonicMs() - m_exchange.startedMs;
    m_exchange.status = answer.status;
    m_exchange.answerBody = answer.body;
    m_exchange.answerContentType = answer.header.contentType().toUtf8();
    m_exchange.error = m_clientHasGone ? QStringLiteral("the client has gone") : answer.error;
    Q_EMIT ended(m_exchange);

    if (answer.status == 0) {
        m_held->drop();
        return;
    }
    ResponseHeader header;
    header.setStatusLine(answer.status, {}, 1, 1);
    const auto fields = endToEndFields(answer.header);
    for (const auto &[name, value] : fields)
        header.addValue(name, value);
    m_held->answer(header, answer.body);
}

void Forwarding::giveUpIfNobodyWaits()
{
    if (m_held->isAwaited())
        return;
    m_clientCheck.stop();
    m_clientHasGone = m_thread.request_stop();
}
