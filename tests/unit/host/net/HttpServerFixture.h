#pragma once

#include <HttpServer.h>

#include <support/FreshSingletons.h>
#include <support/LogCapture.h>
#include <support/RawClient.h>
#include <support/Wait.h>

#include <QThread>

#include <gtest/gtest.h>

#include <functional>

/// A server on a port that the system chose, which notes what arrives and answers by `handler`.
class HttpServerFixture : public testing::Test
{
protected:
    struct Arrival
    {
        RequestHeader header;
        QByteArray body;
        QThread *thread;
    };

    void start(const HttpServerOptions &options = {}, int port = 0)
    {
        server = std::make_unique<HttpServer>(port, options);
        QObject::connect(server.get(), &HttpServer::requestReceived, server.get(),
                         [this](const RequestHeader &header, const QByteArray &body) {
                             const Arrival arrival{header, body, QThread::currentThread()};
                             arrivals.append(arrival);
                             const auto current = handler; // may set another one
                             current(arrival);
                         });
    }

    void answer(int status, const QByteArray &body = {})
    {
        ResponseHeader header;
        header.setStatusLine(status, QStringLiteral("As the test says"), 1, 1);
        server->sendResponse(header, body);
    }

    QList<QByteArray> arrivedBodies() const
    {
        QList<QByteArray> bodies;
        for (const auto &arrival : arrivals)
            bodies.append(arrival.body);
        return bodies;
    }

    /// Whether the server serves a new client.
    bool isServing()
    {
        support::RawClient client(server->port());
        client.send(support::RawClient::request("/", "still there?"));
        return client.answer().status == 200;
    }

    const support::FreshSingletons fresh;
    support::LogCapture log; // keeps the server's lines out of the test's output
    QList<Arrival> arrivals;
    std::function<void(const Arrival &)> handler = [this](const Arrival &) { answer(200); };
    std::unique_ptr<HttpServer> server;
};
