#pragma once

#include <adservice/AdService.h>

#include <support/OutputCapture.h>
#include <support/PrintQt.h>
#include <support/RawClient.h>

#include <QTemporaryDir>

#include <gtest/gtest.h>

/// Options of a service for tests, and its answers.
class AdServiceFixture : public testing::Test
{
protected:
    AdServiceFixture()
    {
        options.port = 0;
        options.key = "key";
        options.frameTime = std::chrono::milliseconds(20);
    }

    static QByteArray get(const QByteArray &path)
    {
        return "GET " + path + " HTTP/1.0\r\n\r\n"; // 1.0: a body without chunks
    }

    static support::RawClient::Answer ask(const AdService &service, const QByteArray &request)
    {
        support::RawClient client(service.port());
        client.send(request);
        return client.answer();
    }

    /// The lines that a service prints in `work`, without their times.
    static QStringList printed(const std::function<void()> &work)
    {
        constexpr int timeWidth = 14;
        auto lines = QString::fromUtf8(support::outputOf(stdout, work)).split('\n');
        lines.removeLast();
        for (auto &line : lines)
            line = line.mid(timeWidth);
        return lines;
    }

    AdServiceOptions options;
};
