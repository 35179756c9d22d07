#pragma once

#include <display/Display.h>

#include <support/Json.h>
#include <support/LogCapture.h>
#include <support/PrintQt.h>
#include <support/RawClient.h>
#include <support/ScriptedServer.h>
#include <support/Wait.h>

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <optional>

/// A display in the test's own process with a plug-in that answers as the test says, and a
/// browser's requests to it.
class DisplayFixture : public testing::Test
{
protected:
    using Answer = support::RawClient::Answer;

    DisplayFixture()
    {
        options.port = 0;
        options.pluginUrl = plugin.url();
        options.stateFile = folder.filePath("state.jsonl");
    }

    void start() { display.emplace(options); }

    Answer send(const QByteArray &request) const
    {
        support::RawClient client(display->port());
        client.send(request);
        return client.answer();
    }

    Answer get(const QByteArray &target) const
    {
        return send("GET " + target + " HTTP/1.1\r\nHost: localhost\r\n\r\n");
    }

    Answer post(const QByteArray &path, const QByteArray &body) const
    {
        return send(support::RawClient::request(path, body));
    }

    /// What a page is told first at the address of its events.
    QJsonObject firstEvent(const QByteArray &path, const QByteArray &name) const
    {
        support::RawClient client(display->port());
        client.send("GET " + path + " HTTP/1.1\r\nHost: localhost\r\n\r\n");
        const QByteArray start = "event: " + name + "\ndata: ";
        EXPECT_TRUE(support::waitFor([&] {
            const auto at = client.received().indexOf(start);
            return at >= 0 && client.received().indexOf("\n\n", at) >= 0;
        }));
        const auto received = client.received();
        const auto at = received.indexOf(start) + start.size();
        return support::json(received.mid(at, received.indexOf("\n\n", at) - at));
    }

    QJsonObject state() const { return firstEvent("/events", "state"); }
    QJsonArray keptMessages() const { return state().value("messages").toArray(); }

    /// The journal's entries of a kind.
    QList<QJsonObject> journal(const QString &kind) const
    {
        QList<QJsonObject> entries;
        const auto all = firstEvent("/journal", "journal").value("entries").toArray();
        for (const auto &entry : all) {
            if (entry[u"kind"] == kind)
                entries.append(entry.toObject());
        }
        return entries;
    }

    QTemporaryDir folder;
    support::LogCapture log;
    support::ScriptedServer plugin;
    DisplayOptions options;
    std::optional<Display> display;
};
