// A subscription to an ad service, from its start to the message for the display. The service's own
// cryptography takes part in each measurement but that of the cryptography alone.

#include <baselines/CurlPost.h>
#include <baselines/SubscriptionKeys.h>

#include <plugin/ViewConnector.h>
#include <support/AdAnswer.h>
#include <support/ScriptedServer.h>

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>

#include <chrono>

namespace {

using Clock = std::chrono::steady_clock;

constexpr int samples = 200; // of each repetition

/// The plug-in without a register, which is not started: what it queues stays in the queue.
class Subscriber : public ViewConnector
{
public:
    using ViewConnector::asyncGetAdsStream;

    void addMessage(const view::Message &message) override
    {
        ViewConnector::addMessage(message);
        if (message.type == view::Message::Type::ShowAd)
            m_loop.quit();
    }
    void waitForMessage() { m_loop.exec(); }

private:
    QEventLoop m_loop;
};

/// Answers every subscriber as it should be.
class AdService : public support::ScriptedServer
{
public:
    AdService() { answerBy(&AdService::answerTo); }

    static support::ScriptedAnswer answerTo(const support::ScriptedRequest &request)
    {
        return toScript(support::AdAnswer{}, request);
    }
};

void measure(benchmark::State &state, const auto &subscribe)
{
    for ([[maybe_unused]] auto _ : state) {
        const auto start = Clock::now();
        subscribe();
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
        // What Qt's classes of a subscription leave behind goes before the next one.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

QByteArray requestOf(const bench::SubscriptionKeys &keys)
{
    return R"({"pk":")" + keys.publicKey().toBase64() + R"("})";
}

QByteArray streamOf(const bench::SubscriptionKeys &keys, const QByteArray &serviceKey,
                    const QByteArray &iv, const QByteArray &body)
{
    return keys.decrypt(QByteArray::fromBase64(serviceKey), QByteArray::fromBase64(iv), body);
}

/// The part of an answer between two texts; the rest if `end` is empty.
QByteArray between(const QByteArray &answer, const QByteArray &begin, const QByteArray &end)
{
    const auto from = answer.indexOf(begin) + begin.size();
    return end.isEmpty() ? answer.mid(from) : answer.mid(from, answer.indexOf(end, from) - from);
}

void cryptography(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        support::ScriptedRequest request;
        const auto start = Clock::now();
        const bench::SubscriptionKeys keys;
        request.body = requestOf(keys);
        const auto asked = Clock::now();
        const auto answer = AdService::answerTo(request).bytes;
        const auto answered = Clock::now();
        benchmark::DoNotOptimize(streamOf(keys, between(answer, "X-PK: ", "\r\n"),
                                          between(answer, "X-IV: ", "\r\n"),
                                          between(answer, "\r\n\r\n", {})));
        const auto own = asked - start + (Clock::now() - answered);
        state.SetIterationTime(std::chrono::duration<double>(own).count());
    }
}

void subscribeByCurl(bench::CurlPost &post)
{
    const bench::SubscriptionKeys keys;
    post(requestOf(keys));
    benchmark::DoNotOptimize(streamOf(keys, post.field("X-PK"), post.field("X-IV"), post.answer()));
}

void byCurl(benchmark::State &state)
{
    const AdService service;
    bench::CurlPost post(service.url().toString().toStdString());
    measure(state, [&] { subscribeByCurl(post); });
}

/// As at the start of a register, which subscribes once.
void byCurlAtFirst(benchmark::State &state)
{
    const AdService service;
    const auto url = service.url().toString().toStdString();
    measure(state, [&] {
        bench::CurlPost post(url);
        subscribeByCurl(post);
    });
}

void subscribeByQt(QNetworkAccessManager &network, const QUrl &url)
{
    const bench::SubscriptionKeys keys;
    QNetworkRequest request(url);
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    auto *const reply = network.post(request, requestOf(keys));
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    benchmark::DoNotOptimize(
        streamOf(keys, reply->rawHeader("X-PK"), reply->rawHeader("X-IV"), reply->readAll()));
    reply->deleteLater();
}

void byQt(benchmark::State &state)
{
    const AdService service;
    QNetworkAccessManager network;
    measure(state, [&] { subscribeByQt(network, service.url()); });
}

void byQtAtFirst(benchmark::State &state)
{
    const AdService service;
    measure(state, [&] {
        auto *const network = new QNetworkAccessManager;
        subscribeByQt(*network, service.url());
        network->deleteLater();
    });
}

void byPlugin(benchmark::State &state)
{
    const AdService service;
    Subscriber subscriber;
    measure(state, [&] {
        subscriber.asyncGetAdsStream(service.url());
        subscriber.waitForMessage();
    });
}

} // namespace

#define SUBSCRIPTION(FUNCTION, NAME)                                                               \
    BENCHMARK(FUNCTION)                                                                            \
        ->UseManualTime()                                                                          \
        ->Iterations(samples)                                                                      \
        ->Unit(benchmark::kMicrosecond)                                                            \
        ->Name("subscription/" NAME)

SUBSCRIPTION(cryptography, "cryptography");
SUBSCRIPTION(byCurl, "cryptography and one post by curl");
SUBSCRIPTION(byCurlAtFirst, "cryptography and the first post by curl");
SUBSCRIPTION(byQt, "cryptography and one post by Qt");
SUBSCRIPTION(byQtAtFirst, "cryptography and the first post by Qt");
SUBSCRIPTION(byPlugin, "plug-in");
