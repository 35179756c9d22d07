#include "Outage.h"

#include "OwnAuthority.h"
#include "OwnResolver.h"

#include <campaigns/support/Campaign.h>
#include <support/PrintQt.h>
#include <support/Wait.h>

#include <MockFactory.h>

#include <algorithm>
#include <map>

#include <malloc.h>

using namespace std::chrono_literals;

namespace {

constexpr int burst = 200;
constexpr int laterPictures = 4;
constexpr auto aLongTime = 60s;

QList<int> numbersOf(const QList<support::ScriptedRequest> &requests)
{
    QList<int> numbers;
    for (const auto &request : requests)
        numbers.append(numberOf(request.body));
    return numbers;
}

QList<int> numbersOf(const QList<RecordedPosts::Post> &posts)
{
    QList<int> numbers;
    for (const auto &post : posts)
        numbers.append(post.number);
    return numbers;
}

/// Whether `part` is left of `whole` if some of it is taken out.
bool isPart(const QList<int> &part, const QList<int> &whole)
{
    auto next = part.begin();
    for (const int number : whole) {
        if (next != part.end() && *next == number)
            ++next;
    }
    return next == part.end();
}

} // namespace

/// The plug-in, with its queue and its client to look at.
class Outage::Connector : public ViewConnector
{
public:
    using ViewConnector::client;
    using ViewConnector::messages;
};

Outage::Outage() : random(campaign::seed())
{
    // Large pictures go back to the system when they are freed, so that what is kept can be told.
    ::mallopt(M_MMAP_THRESHOLD, 128 * 1024);
    MockFactory<RestClient>::inject(posts);
    auto &config = singletons.config();
    config.setValue(QStringLiteral("ViewConnector:server"),
                    QStringLiteral("http://127.0.0.1:%1").arg(proxy.port()));
    config.setValue(QStringLiteral("ViewConnector:port"), 0);
    config.setValue(QStringLiteral("ViewConnector:interval"), static_cast<int>(interval.count()));
    config.setValue(QStringLiteral("ViewConnector:timeout"), shortTimeout());
    m_plugin = std::make_unique<Connector>();
    m_plugin->init();
    EXPECT_TRUE(waitUntilAllIsSent()); // the configuration
    tidyUp();
}

Outage::~Outage()
{
    heal();
    MockFactory<RestClient>::inject({});
}

/// A healthy answer may be late on a machine that is busy with other tests.
int Outage::shortTimeout()
{
    return campaign::scaled(1, 2);
}

/// Where no post lasts until its time-out none should end by it, however busy the machine is: what
/// was cut off so would not have arrived.
void Outage::setTimeoutFor(const Fault &fault) const
{
    constexpr int longTimeout = 20;
    QMetaObject::invokeMethod(m_plugin->client.data(), "setTimeout", Qt::BlockingQueuedConnection,
                              Q_ARG(int, fault.lastsUntilTimeOut ? shortTimeout() : longTimeout));
}

void Outage::useTls()
{
    m_usesTls = true;
    setServerAddress(QStringLiteral("https://127.0.0.1:%1").arg(proxy.port()));
}

void Outage::hangNameLookup()
{
    ownresolver::hang();
    setServerAddress(QStringLiteral("http://d%1%2:%3")
                         .arg(++m_lastName)
                         .arg(QString::fromStdString(ownresolver::domain))
                         .arg(proxy.port()));
}

void Outage::setServerAddress(const QString &address) const
{
    QMetaObject::invokeMethod(m_plugin->client.data(), "setServerAddress",
                              Qt::BlockingQueuedConnection, Q_ARG(QString, address));
}

void Outage::heal(const support::ScriptedAnswer &healthy)
{
    display.answer(healthy);
    if (m_usesTls)
        proxy.present(support::TlsIdentity::good(ownAuthority()));
    proxy.heal();
    proxy.comeUp();
    ownresolver::goOn();
}

int Outage::queue(Type type, qsizetype pictureBytes)
{
    QVariantMap data{{QStringLiteral("n"), ++m_lastNumber}};
    if (type == Type::ImageData)
        data.insert(QStringLiteral("picture"), QString(pictureBytes, QLatin1Char('x')));
    const view::Message message(type, data);
    const auto begin = std::chrono::steady_clock::now();
    m_plugin->addMessage(message);
    m_keptNs.push_back(std::chrono::nanoseconds(std::chrono::steady_clock::now() - begin).count());
    return m_lastNumber;
}

QList<int> Outage::queueEverything(qsizetype firstPictureBytes)
{
    std::map<Type, QList<int>> expected{
        {Type::ImageData, {queue(Type::ImageData, firstPictureBytes)}}};
    EXPECT_TRUE(support::waitFor([this] { return posts->begunCount() > 0; }, aLongTime));

    std::vector<Type> types(burst, Type::UpdateDocument);
    types.insert(types.end(), laterPictures, Type::ImageData);
    for (const auto type : {Type::Configure, Type::UpdateDocument, Type::QrPayment, Type::ShowAd,
                            Type::PriceList, Type::Content, Type::PaymentDraft})
        types.insert(types.end(), 2, type);
    std::shuffle(types.begin(), types.end(), random);
    for (const auto type : types) {
        const int number = queue(type);
        if (type == Type::ImageData)
            expected[type].append(number);
        else
            expected[type] = {number};
    }

    QList<int> inOrder;
    for (const auto &[type, numbers] : expected)
        inOrder.append(numbers);
    return inOrder;
}

bool Outage::waitForAnAttempt() const
{
    const auto begun = posts->begunCount();
    return support::waitFor([&] { return posts->endedCount() > begun; }, aLongTime);
}

bool Outage::waitUntilAllIsSent() const
{
    return support::waitFor(
        [this] { return m_plugin->messages->lock()->isEmpty() && !posts->isPosting(); }, aLongTime);
}

void Outage::expectDelivered(const QList<int> &expected, const Fault &fault, int connections) const
{
    const auto attempts = numbersOf(posts->ended());
    const auto arrivals = numbersOf(display.requests());
    EXPECT_EQ(posts->delivered(), expected);
    EXPECT_TRUE(isPart(expected, arrivals));
    EXPECT_TRUE(isPart(arrivals, attempts));
    EXPECT_LE(connections, attempts.size());
    if (campaign::isWhole()) {
        EXPECT_EQ(arrivals, fault.letsRequestsArrive ? attempts : expected);
    }
}

void Outage::tidyUp()
{
    posts->forget();
    display.takeRequests();
    proxy.goDown(); // with which the threads of the connections end
    display.goDown();
    display.comeUp();
    proxy.comeUp();
}

void Outage::reportHostThread() const
{
    auto sorted = m_keptNs;
    std::sort(sorted.begin(), sorted.end());
    const auto at = [&](double part) {
        return static_cast<double>(sorted[static_cast<std::size_t>(
                   part * static_cast<double>(sorted.size() - 1))]) /
               1000;
    };
    campaign::report("messages queued", static_cast<double>(sorted.size()));
    campaign::report("host thread kept, median", at(0.5), "us");
    campaign::report("host thread kept, 99.99th percentile", at(0.9999), "us");
    campaign::report("host thread kept, longest", at(1), "us");
    constexpr double farBelowAPostUs = 200'000;
    constexpr double belowAPostUs = 900'000;
    if (campaign::isWhole()) { // not among other tests, which may keep the processor
        EXPECT_LT(at(0.9999), farBelowAPostUs);
        EXPECT_LT(at(1), belowAPostUs);
    }
}
