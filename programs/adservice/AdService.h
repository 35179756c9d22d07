#pragma once

#include <adservice/AdFolder.h>
#include <adservice/AdServiceOptions.h>
#include <adservice/Subscription.h>
#include <adservice/ThreadedHttpServer.h>

#include <latch>
#include <stop_token>

/**
 * The ad service: answers subscriptions, serves the stream to those who know its key, and still
 * advertisements to all. Prints a line for each event.
 *
 * Owner: main. Thread: created and destroyed on one thread; requests are answered on those of the
 * server. Errors: `isListening` tells whether the port could be bound.
 * Shut-down: the destructor ends streams and waiting answers at once.
 */
class AdService
{
public:
    explicit AdService(AdServiceOptions options);
    ~AdService();
    Q_DISABLE_COPY_MOVE(AdService)

    bool isListening() const { return m_server.isListening(); }
    QString errorString() const { return m_server.errorString(); }
    int port() const { return m_server.port(); }

private:
    using Request = ThreadedHttpServer::Request;

    // On the connections' threads:
    std::optional<Answer> handle(const Request &request) const;
    std::optional<Answer> route(const Request &request) const;
    std::optional<Answer> subscribe(const Request &request) const;
    QString outcomeOfSubscription() const;
    Answer stream(const Request &request) const;
    Answer ad(const QString &name) const;

    const AdServiceOptions m_options;
    const AdFolder m_ads;
    Announcement m_announcement; // complete once m_ready is
    std::latch m_ready{1};
    std::stop_source m_ending;
    ThreadedHttpServer m_server; // last: its threads use all the others
};
