#pragma once

#include <pages/PageRoutes.h>

#include <support/LogCapture.h>
#include <support/RawClient.h>

#include <gtest/gtest.h>

/// A server whose requests go to `routes`.
class PageServerFixture : public testing::Test
{
protected:
    PageServerFixture()
    {
        QObject::connect(&server, &HttpServer::requestReceived, &server,
                         [this](const RequestHeader &header, const QByteArray &content) {
                             routes.serve(server, header, content);
                         });
    }

    support::RawClient::Answer ask(const QByteArray &method, const QByteArray &target) const
    {
        support::RawClient client(server.port());
        client.send(method + ' ' + target +
                    " HTTP/1.1\r\nHost: localhost\r\nContent-Length: 4\r\n\r\nbody");
        return client.answer();
    }

    support::LogCapture log; // keeps the server's lines out of the test's output
    PageRoutes routes;
    HttpServer server{0, HttpServerOptions{}};
};
