#pragma once

#include <display/AdPlayer.h>

#include <support/PrintQt.h>
#include <support/ScriptedServer.h>
#include <support/Wait.h>

#include <QSignalSpy>

#include <gtest/gtest.h>

#include <chrono>

using namespace std::chrono_literals;
using support::ScriptedAnswer;

inline const QByteArray png = QByteArray::fromHex("89504e470d0a1a0a0000000d49484452");
inline const QString dataAddress = "data:image/png;base64," + png.toBase64();

/// A player, and a server whose answers it plays.
class AdPlayerFixture : public testing::Test
{
protected:
    explicit AdPlayerFixture(std::chrono::milliseconds patience = 300ms,
                             std::chrono::milliseconds loadTime = 1min)
        : player(patience, loadTime)
    {
    }

    void play(const QString &url, int seconds = 1)
    {
        player.play({{"url", url}, {"time", seconds}});
    }
    QString address(const QString &path = "/ad") const { return server.url(path).toString(); }
    QString streamAddress() const
    {
        return QString("ads://127.0.0.1:%1?stream=3&key=a%26b").arg(server.port());
    }

    /// Plays and returns what was reported; it must be reported once.
    bool outcomeOf(const QString &url)
    {
        QSignalSpy finished(&player, &AdPlayer::finished);
        play(url);
        EXPECT_TRUE(support::waitFor([&] { return !finished.isEmpty(); }));
        support::letPass(1ms);
        EXPECT_EQ(finished.size(), 1);
        return !finished.isEmpty() && finished.constFirst().constFirst().toBool();
    }

    support::ScriptedServer server;
    AdPlayer player;
};
