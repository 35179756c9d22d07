#include <register/check/DisplayCheck.h>

#include <register/CashierCommands.h>
#include <register/GoodsPictures.h>
#include <register/HostCommands.h>
#include <register/check/Verdict.h>

#include <common/MessageTypes.h>
#include <common/UsageError.h>

#include <chrono>
#include <utility>

namespace {

using namespace std::chrono_literals;

/// For the next message of the plug-in's to be posted, and in the end for the display's requests.
constexpr std::chrono::milliseconds patience = 8s;
/// For one step, whatever else is posted meanwhile: many pictures, say.
constexpr std::chrono::milliseconds stepLimit = 40s;

const auto imageData = QStringLiteral("ImageData");
constexpr int nobodyListens = 7; // libcurl's CURLE_COULDNT_CONNECT
constexpr int picturesAskedFor = 2;

QUrl loopback(int port)
{
    QUrl url(QStringLiteral("http://127.0.0.1"));
    url.setPort(port);
    return url;
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
    , m_till(pluginFile)
    , m_cashier(m_till, m_shop.goods())
    , m_script(checkScript())
{
    reservePluginPort(requestPort);
    const auto plugin = loopback(m_pluginPort.serverPort());
    m_asker.emplace(plugin, QStringLiteral("register"));
    m_requests.emplace(requestPort, plugin);
    if (!m_requests->isListening())
        throw UsageError(QStringLiteral("--request-port %1: %2. Stop the program that uses it, or "
                                        "choose another port and tell the display.")
                             .arg(requestPort)
                             .arg(m_requests->errorString()));
    m_shop.configure(loopback(m_tap.port()).toString(), m_pluginPort.serverPort());
    addGoodsPictures(m_shop.goods(), m_shop.imagesFolder());
    addHostCommands(m_commands, m_till, m_shop.imagesFolder());
    addCashierCommands(m_commands, m_cashier);

    connect(&m_tap, &MessageTap::received, &m_poster, &DisplayPoster::send);
    connect(&m_poster, &DisplayPoster::posted, this, &DisplayCheck::takePost);
    connect(&*m_requests, &Relay::exchanged, this, [this](const Exchange &exchange) {
        m_judge.take(exchange.requestBody, exchange.startedMs);
        finishWhenAllCame();
    });
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_patience, &QTimer::timeout, this, &DisplayCheck::giveUp);
    m_stepLimit.setSingleShot(true);
    m_stepLimit.setInterval(stepLimit);
    connect(&m_stepLimit, &QTimer::timeout, this, &DisplayCheck::giveUp);
}

/// The plug-in does not tell which port the system chose for it, so it must be known before.
void DisplayCheck::reservePluginPort(int requestPort)
{
    do {
        m_pluginPort.close();
        if (!m_pluginPort.listen(QHostAddress::LocalHost))
            throw UsageError(QStringLiteral("--check: there is no free port for the plug-in: %1.")
                                 .arg(m_pluginPort.errorString()));
    } while (m_pluginPort.serverPort() == requestPort);
}

DisplayCheck::~DisplayCheck()
{
    m_till.deinit();
}

void DisplayCheck::start()
{
    m_pluginPort.close();
    m_patience.start();
    runStep();
}

void DisplayCheck::runStep()
{
    m_stepLimit.start();
    m_commands.run(m_script[m_step].command);
}

void DisplayCheck::takePost(const Post &post)
{
    if (m_finished)
        return;
    m_patience.start();
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
    m_isAbsent = m_step == 0 && post.result == nobodyListens;
    ++m_step;
    if (m_isAbsent)
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
    if (!isPicture)
        m_judge.takeAdvertisement(post);
    const auto what =
        isPicture ? QStringLiteral("picture %1 comes") : QStringLiteral("advertisement %1 comes");
    if (number <= (isPicture ? picturesAskedFor : CheckShop::ads) || post.result != 0)
        add(verdictOn(post, what.arg(number)));
    if (m_judge.advertisingRunsAway())
        giveUp();
}

/// Also where the display asks for none: one that there is and one that there is not.
void DisplayCheck::askForPictures()
{
    m_stepLimit.start();
    for (const auto *code : {"100", "none"})
        m_asker->send(pictureRequest(QString::fromLatin1(code)), [](bool) {});
}

void DisplayCheck::finishWhenAllCame()
{
    if (!isPlaying() && m_unasked.value(imageData) >= picturesAskedFor && m_judge.hasAllReports())
        finish();
}

/// The plug-in had other messages to post, or there was nothing more to wait for.
void DisplayCheck::giveUp()
{
    const auto late =
        QStringLiteral("it was not posted: more urgent messages kept coming, or none");
    const auto remedy =
        QStringLiteral("Answer at once, ask for each picture once, and report an advertisement "
                       "when its time is over.");
    if (isPlaying()) {
        const auto &step = m_script[m_step++];
        add({step.type, step.what, CheckResult::Outcome::Failed, late, remedy});
    } else if (m_unasked.value(imageData) < picturesAskedFor) {
        add({imageData, QStringLiteral("pictures come"), CheckResult::Outcome::Failed, late,
             remedy});
    }
    finish();
}

void DisplayCheck::finish()
{
    if (std::exchange(m_finished, true))
        return;
    m_patience.stop();
    m_stepLimit.stop();
    skipTheRest();
    if (!m_isAbsent)
        for (const auto &result : m_judge.results(requestPort()))
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
