#include <RestClient.h>

#include "AvailabilityLog.h"
#include "HttpPost.h"

#include <MockFactoryDefinition.h>

#include <log4qt/logger.h>

#include <algorithm>
#include <chrono>

template class MockFactory<RestClient>;

namespace {

constexpr std::chrono::seconds defaultTimeout(30);

} // namespace

struct RestClient::Transfer
{
    HttpPost post;
    AvailabilityLog availability;
    std::chrono::seconds timeout = defaultTimeout;
    int result = 0; // of the last post
    const Log4Qt::Logger *logger = nullptr;
    QString alias;
    bool compactLogs = true;
};

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
    auto &[post, availability, timeout, result, logger, alias, compactLogs] = *m_transfer;
    result = post.send(url, body, headers, timeout);
    if (result == 0)
        availability.succeeded();
    else
        availability.failed(post.failure());
    if (!compactLogs && logger != nullptr)
        logger->debug(QStringLiteral("%1: POST %2, %3 байт: %4")
                          .arg(alias, url.toString(), QString::number(body.size()),
                               result == 0 ? QString::number(post.status()) : post.failure()));
    return result;
}

int RestClient::result() const
{
    return m_transfer->result;
}
