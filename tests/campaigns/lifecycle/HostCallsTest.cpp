// Each function of the host that the plug-in calls throws, at each thing that the host does with
// it.

#include "HostCalls.h"

#include <unit/plugin/HttpRequest.h>

#include <ActivityNotifier.h>
#include <BasicPlugin.h>
#include <Config.h>
#include <DocumentWatcher.h>
#include <ImageDao.h>
#include <PluginLoader.h>
#include <Receipt.h>
#include <Singleton.h>
#include <Tr.h>

#include <support/AdAnswer.h>
#include <support/FreePort.h>
#include <support/FreshSingletons.h>
#include <support/LogCapture.h>
#include <support/PrintQt.h>
#include <support/RawClient.h>
#include <support/ScriptedServer.h>
#include <support/Unreadable.h>
#include <support/Wait.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace {

using namespace std::chrono_literals;

const ImageId code(ImageId::GoodsCode, "100");
const ImageId barcode(ImageId::Barcode, "4600000000000");
const QByteArray png = QByteArray::fromHex("89504e470d0a1a0a0000000d49484452");

class HostCallOuts : public testing::Test
{
protected:
    HostCallOuts()
    {
        service.answerBy([](const support::ScriptedRequest &request) {
            return toScript(support::AdAnswer(), request);
        });
        const QVariantMap settings{{"ViewConnector:server", display.url({}).toString()},
                                   {"ViewConnector:port", port},
                                   {"ViewConnector:interval", 1},
                                   {"ViewConnector.Ads:url", service.url().toString()},
                                   {"View.Style:showImages", true},
                                   {"View.Interface:touchng", true},
                                   {"View.ADTimetable.one:index", 1},
                                   {"View.ADTimetable.one:time", 1},
                                   {"View.ADTimetable.one:url", "http://ads/1"}};
        for (auto setting = settings.begin(); setting != settings.end(); ++setting)
            host.config().setValue(setting.key(), setting.value());
        load();
    }

    void load()
    {
        loader.reset();
        loader = std::make_unique<PluginLoader>(QStringLiteral(PLUGIN_FILE));
    }
    void start() const { loader->plugin()->init(); }

    void follow(int receipt) const
    {
        loader->documentWatcher()->setDocument(QSharedPointer<Receipt>::create(receipt));
    }

    /// Sends what the display asks for, and returns when the plug-in has dealt with it.
    void ask(const QByteArray &content)
    {
        const auto received = [this] {
            return log.textsOf("viewconnector").count("Получено сообщение");
        };
        const auto before = received();
        support::RawClient client(port);
        client.send("POST / HTTP/1.1\r\nHost: 127.0.0.1\r\nContent-Length: " +
                    QByteArray::number(content.size()) + "\r\n\r\n" + content);
        EXPECT_TRUE(support::waitFor([&] { return received() > before; }));
    }

    /// How many answers of the ad service have been dealt with, well or badly.
    qsizetype adAnswers() const
    {
        const auto lines = log.textsOf("viewconnector");
        return std::count_if(lines.begin(), lines.end(), [](const QString &text) {
            return text.startsWith("Добавляем поток") || text.startsWith("Неверный ответ") ||
                   text.startsWith("Ошибка декодирования");
        });
    }

    static QByteArray pictureRequest()
    {
        return QJsonDocument(QJsonObject{{"type", "request"},
                                         {"name", "getImage"},
                                         {"data", QJsonObject{{"GoodsCode", code.toJson()},
                                                              {"Barcode", barcode.toJson()}}}})
            .toJson();
    }

    static QByteArrayList requests()
    {
        return {"{}", pictureRequest(), R"({"name":"adResult","value":true})",
                R"({"name":"adResult","value":false})"};
    }

    /// What the plug-in sends reaches the display, and what the display asks is answered.
    void expectToWork()
    {
        EXPECT_TRUE(loader->plugin()->deinit());
        EXPECT_TRUE(loader->plugin()->init());
        const int receipt = ++lastReceipt;
        follow(receipt);
        const auto expected = "\"number\":" + QByteArray::number(receipt) + ',';
        EXPECT_TRUE(support::waitFor([&] {
            const auto arrived = display.takeRequests();
            return std::any_of(arrived.begin(), arrived.end(), [&](const auto &request) {
                return request.body.contains(expected);
            });
        }));
        EXPECT_EQ(post(port, "{}").status, 200);
    }

    enum class Reaches { Host, Nobody };

    /// Takes this step with a plug-in that was prepared for it, for each of the host's functions
    /// anew. What it throws may reach whoever takes the step, who is the host, but not the event
    /// loop.
    void fail(const char *stepName, Reaches reaches, const std::function<void()> &prepare,
              const std::function<void()> &step)
    {
        SCOPED_TRACE(stepName);
        for (const auto &call : hostCallsOf(PLUGIN_FILE)) {
            SCOPED_TRACE(call.name());
            load();
            prepare();
            {
                const HostCall::Throwing failure(call);
                try {
                    step();
                } catch (const HostFailure &) {
                    EXPECT_EQ(reaches, Reaches::Host);
                }
                if (failure.count() == 0)
                    continue; // it is not called here
                failed.insert(call.name());
            }
            if (!loader)
                load();
            expectToWork();
        }
    }

    /// Those that have not failed in any step.
    std::vector<std::string> spared() const
    {
        std::vector<std::string> spared;
        for (const auto &call : hostCallsOf(PLUGIN_FILE)) {
            if (!failed.contains(call.name()))
                spared.push_back(call.name());
        }
        return spared;
    }

    const support::LogCapture log;
    support::FreshSingletons host;
    support::ScriptedServer display;
    support::ScriptedServer service;
    const int port = support::freePort();
    std::unique_ptr<PluginLoader> loader;
    std::set<std::string> failed;
    int lastReceipt = 1000;
};

/// Every kind of event, with each argument that is read.
QList<Event> events()
{
    const auto title = QVariant::fromValue(tr::Tr({{"ru", "Цены"}}));
    return {Event(261, {{"type", 1}, {"typeName", "text"}, {"data", "x"}}),
            Event(184, {{"dialogId", 7}, {"qrCode", "x"}, {"amount", 1}, {"timeout", 1}}),
            Event(117, {{"dialogId", 8}, {"data", 1}, {"columns", 1}, {"title", title}}),
            Event(117, {{"scroll", "up"}}),
            Event(103, {{"dialogId", 8}}),
            Event(266, {{"sum", 1}})};
}

} // namespace

TEST_F(HostCallOuts, May_throw_at_any_step)
{
    const auto nothing = [] {};
    const auto starting = [this] { start(); };

    fail(
        "load", Reaches::Host, [this] { loader.reset(); }, [this] { load(); });
    fail("start", Reaches::Host, nothing, starting);
    fail("receipt", Reaches::Host, starting, [this] { follow(1); });
    for (qsizetype trigger = 0; trigger < 3; ++trigger)
        fail("trigger", Reaches::Host, starting,
             [=, this] { loader->plugin()->triggers().at(trigger).run({}); });
    for (const auto &event : events())
        fail("event", Reaches::Host, starting, [&] { host.notifier().notify(event); });
    for (const auto &content : requests())
        fail("request", Reaches::Nobody, starting, [&] { ask(content); });
    fail(
        "picture", Reaches::Nobody,
        [this] {
            host.images().store(Image(code));
            start();
            ask(pictureRequest());
        },
        [this] { host.images().store(Image(code, png)); });
    qsizetype adAnswersBefore = 0;
    fail(
        "answer of the ad service", Reaches::Nobody,
        [&] {
            adAnswersBefore = adAnswers();
            start();
        },
        [&] { EXPECT_TRUE(support::waitFor([&] { return adAnswers() > adAnswersBefore; })); });
    fail(
        "start of the client", Reaches::Nobody,
        [this] {
            host.config().setValue("ViewConnector:server", support::Unreadable::value());
            start();
        },
        [this] {
            host.config().setValue("ViewConnector:server", display.url({}).toString());
            support::letPass(300ms); // beyond the pause after a failed start
        });
    fail("stop", Reaches::Host, starting, [this] { loader->plugin()->deinit(); });
    fail("end", Reaches::Nobody, starting, [this] { loader.reset(); });

    EXPECT_THAT(spared(), testing::ElementsAre());
}
