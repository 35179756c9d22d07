#include <register/CashierPage.h>

#include <pages/PageAnswers.h>
#include <register/GoodsRoutes.h>
#include <register/RegisterState.h>

#include <QJsonDocument>

namespace {

const auto stateEvent = QStringLiteral("state");

HttpServerOptions serverOptions()
{
    HttpServerOptions options;
    options.guard = true;
    return options;
}

} // namespace

CashierPage::CashierPage(int port, CommandRunner &runner, const Till &till, const Cashier &cashier)
    : m_runner(runner), m_till(till), m_cashier(cashier), m_server(port, serverOptions())
{
    const auto get = QStringLiteral("GET");
    m_routes.addFile(QStringLiteral("/"), QStringLiteral(":/cashier/index.html"));
    m_routes.addFile(QStringLiteral("/shop"), QStringLiteral(":/cashier/shop.html"));
    m_routes.addFolder(QStringLiteral("/cashier/"), QStringLiteral(":/cashier"));
    m_routes.add(get, QStringLiteral("/events"), [this](const PageRequest &request) {
        m_events.open(request.server,
                      EventStreams::event(stateEvent, registerState(m_till, m_cashier)));
    });
    m_routes.add(
        QStringLiteral("POST"), QStringLiteral("/commands"), [this](const PageRequest &request) {
            const auto answer = m_runner.run(request.content, CommandRunner::Source::Page);
            answerWith(request.server, QStringLiteral("application/json"), answer.toLine());
        });
    connect(&m_server, &HttpServer::requestReceived, this,
            [this](const RequestHeader &header, const QByteArray &content) {
                m_routes.serve(m_server, header, content);
            });
    connect(&m_runner, &CommandRunner::answered, this, &CashierPage::tell);
}

void CashierPage::showGoods(const Goods &goods, const QString &imagesFolder)
{
    addGoodsRoutes(m_routes, goods, imagesFolder);
}

/// The state comes first: who hears of a command knows what it has led to.
void CashierPage::tell(const QByteArray &text, const CommandAnswer &answer,
                       CommandRunner::Source source)
{
    if (auto state = registerState(m_till, m_cashier); state != m_state) {
        m_state = std::move(state);
        m_events.publish(stateEvent, m_state);
    }
    m_events.publish(QStringLiteral("answer"),
                     {{QStringLiteral("command"), QJsonDocument::fromJson(text).object()},
                      {QStringLiteral("text"), QString::fromUtf8(text.trimmed())},
                      {QStringLiteral("answer"), answer.toJson()},
                      {QStringLiteral("source"), source == CommandRunner::Source::Page
                                                     ? QStringLiteral("page")
                                                     : QStringLiteral("script")}});
}
