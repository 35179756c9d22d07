#pragma once

#include <pages/EventStreams.h>
#include <pages/PageRoutes.h>
#include <register/CommandRunner.h>

#include <HttpServer.h>

#include <QJsonObject>
#include <QObject>
#include <QString>

class Cashier;
class Goods;
class Till;

/**
 * The cashier's page: serves it with the goods and their pictures, runs its commands, and tells it
 * of the receipt, the open dialogs and of every command, the script's too. Pages of other sites are
 * kept out.
 *
 * Owner: main; the runner, the till and the cashier must outlive it. Thread: the main thread.
 * Errors: `isListening` tells whether the port could be bound.
 * Shut-down: the destructor closes the connections.
 */
class CashierPage : public QObject
{
    Q_OBJECT

public:
    /// Listens on the loopback address; port 0 lets the system choose one.
    CashierPage(int port, CommandRunner &runner, const Till &till, const Cashier &cashier);

    /// Without this the shop has no goods; an empty folder stands for no pictures.
    void showGoods(const Goods &goods, const QString &imagesFolder);

    bool isListening() const { return m_server.isListening(); }
    QString errorString() const { return m_server.errorString(); }
    int port() const { return m_server.port(); }

private:
    void tell(const QByteArray &text, const CommandAnswer &answer, CommandRunner::Source source);

    CommandRunner &m_runner;
    const Till &m_till;
    const Cashier &m_cashier;
    HttpServer m_server;
    PageRoutes m_routes;
    EventStreams m_events;
    QJsonObject m_state; // as it was told last
};
