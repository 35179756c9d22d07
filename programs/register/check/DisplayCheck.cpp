#include <register/check/DisplayCheck.h>

#include <register/CashierCommands.h>
#include <register/GoodsPictures.h>
#include <register/HostCommands.h>
#include <register/check/Verdict.h>

#include <common/MessageTypes.h>
#include <common/UsageError.h>

#include <QTcpServer>

#include <chrono>
#include <utility>

namespace {

using namespace std::chrono_literals;

/// For a message of the plug-in's to come, and in the end for the display's requests.
constexpr std::chrono::milliseconds patience = 8s;

const auto imageData = QStringLiteral("ImageData");
const auto showAd = QStringLiteral("ShowAd");
const auto adResult = QStringLiteral("adResult");
constexpr int nobodyListens = 7; // libcurl's CURLE_COULDNT_CONNECT
constexpr int picturesAskedFor = 2;

/// A port that nobody uses now: the plug-in does not tell which one it was given.
int freePort()
{
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost, 0);
    return probe.serverPort();
}

QUrl loopback(int port)
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1").arg(port));
}

QJsonObject pictureRequest(const QString &code)
{
    const QJsonObject id{{QStringLiteral("type"), QStringLiteral("GoodsCode")},
                         {QStringLiteral("value"), code}};
    return {{QStringLiteral("type"), QStringLiteral("request")},
            {QStringLiteral("name"), QStringLiteral("getImage")},
            {QStringLiteral("data"), QJsonObject{{QStringLiteral("GoodsCode"), id}}}};
}

} // namespace

DisplayCheck::DisplayCheck(const QUrl &display, int requestPort, const QString &pluginFile)
    : m_poster(display)
    , m_pluginPort(freePort())
    , m_requests(requestPort, loopback(m_pluginPort))
    , m_asker(loopback(m_pluginPort), QStringLiteral("register"))
    , m_till(pluginFile)
    , m_cashier(m_till, m_shop.goods())
    , m_script(checkScript())
{
    if (!m_requests.isListening())
        throw UsageError(QStringLiteral("--request-port %1: %2. Stop the program that uses it, or "
                                        "choose another port and tell the display.")
                             .arg(requestPort)
                             .arg(m_requests.errorString()));
    m_shop.configure(loopback(m_tap.port()).toString(), m_pluginPort);
    addGoodsPictures(m_shop.goods(), m_shop.imagesFolder());
    addHostCommands(m_commands, m_till, m_shop.imagesFolder());
    addCashierCommands(m_commands, m_cashier);

    connect(&m_tap, &MessageTap::received, &m_poster, &DisplayPoster::send);
    connect(&m_poster, &DisplayPoster::posted, this, &DisplayCheck::takePost);
    connect(&m_requests, &Relay::exchanged, this, [this](const Exchange &exchange) {
        m_judge.take(exchange.requestBody);
        finishWhenAllCame();
    });
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_patience, &QTimer::timeout, this, &DisplayCheck::finish);
}

DisplayCheck::~DisplayCheck()
{
    m_till.deinit();
}

void DisplayCheck::start()
{
    runStep();
}

void DisplayCheck::runStep()
{
    m_patience.start();
    m_commands.run(m_script[m_step].command);
}

void DisplayCheck::takePost(const Post &post)
{
    if (m_finished)
        return;
    const auto type = messageTypeOfPath(post.path);
    if (isPlaying() && type == m_script[m_step].type)
        takeStep(post);
    else
        takeUnasked(type, post);
    finishWhenAllCame();
}

void DisplayCheck::takeStep(const Post &post)
{
    add(verdictOn(post, m_script[m_step].what));
    const bool isAbsent = m_step == 0 && post.result == nobodyListens;
    ++m_step;
    if (isAbsent)
        finish(); // the rest would say the same
    else if (isPlaying())
        runStep();
    else
        askForPictures();
}

/// Pictures and advertisements come when they are due. A display that reports results makes the
/// timetable go round, and one that asks for many pictures gets them: of more than the check needs,
/// only what fails is told.
void DisplayCheck::takeUnasked(const QString &type, const Post &post)
{
    const int number = ++m_unasked[type];
    const bool isPicture = type == imageData;
    const auto what =
        isPicture ? QStringLiteral("picture %1 comes") : QStringLiteral("advertisement %1 comes");
    if (number <= (isPicture ? picturesAskedFor : CheckShop::ads) || post.result != 0)
        add(verdictOn(post, what.arg(number)));
}

/// Also where the display asks for none: one that there is and one that there is not.
void DisplayCheck::askForPictures()
{
    m_patience.start();
    for (const auto *code : {"100", "none"})
        m_asker.send(pictureRequest(QString::fromLatin1(code)), [](bool) {});
}

void DisplayCheck::finishWhenAllCame()
{
    if (!isPlaying() && m_unasked.value(imageData) >= picturesAskedFor &&
        m_unasked.value(showAd) >= CheckShop::ads && m_judge.count(adResult) >= CheckShop::ads)
        finish();
}

void DisplayCheck::finish()
{
    if (std::exchange(m_finished, true))
        return;
    m_patience.stop();
    if (isPlaying())
        skipTheRest();
    else
        for (const auto &result : m_judge.results(m_requests.port()))
            add(result);
    // Out of the slots of the servers, which must not be destroyed within them.
    QMetaObject::invokeMethod(this, &DisplayCheck::finished, Qt::QueuedConnection);
}

void DisplayCheck::skipTheRest()
{
    for (auto step = m_script.begin() + m_step; step != m_script.end(); ++step)
        add({step->type,
             step->what,
             CheckResult::Outcome::Skipped,
             QStringLiteral("not tried: the check ended before"),
             {}});
}

void DisplayCheck::add(const CheckResult &result)
{
    m_results.append(result);
    Q_EMIT judged(result);
}
