// The plug-in's subscription at a service whose cryptography is not the host's.

#include <support/FreshSingletons.h>
#include <support/LogCapture.h>
#include <support/PrintQt.h>
#include <support/ScriptedServer.h>
#include <support/Wait.h>

#include <plugin/ViewConnector.h>

#include <QJsonDocument>
#include <QProcess>

#include <gtest/gtest.h>

namespace {

class IndependentService : public testing::Test
{
protected:
    IndependentService() { display.answer(support::ScriptedAnswer::ok()); }
    ~IndependentService() override
    {
        service.kill();
        service.waitForFinished();
    }

    void start(const QStringList &arguments)
    {
        service.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        service.start(QStringLiteral(INDEPENDENT_SERVICE), arguments);
        ASSERT_TRUE(service.waitForReadyRead()) << "is python3-cryptography installed?";
        const int port = service.readLine().trimmed().toInt();
        ASSERT_NE(port, 0);

        auto &config = singletons.config();
        config.setValue("ViewConnector:server", display.url({}).toString());
        config.setValue("ViewConnector:port", 0);
        config.setValue("ViewConnector:interval", 1);
        config.setValue("ViewConnector.Ads:url", QString("http://127.0.0.1:%1/").arg(port));
        plugin.init();
    }

    bool waitForLine(const QString &text) const
    {
        return support::waitFor([&] { return log.textsOf("viewconnector").contains(text); });
    }

    support::LogCapture log;
    support::FreshSingletons singletons;
    support::ScriptedServer display;
    QProcess service;
    ViewConnector plugin;
};

} // namespace

TEST_F(IndependentService, Agrees_with_the_plugin_on_the_key_of_its_stream)
{
    start({});
    EXPECT_TRUE(waitForLine("Добавляем поток ads://127.0.0.1:9?stream=7&key=key of the stream"));
    ASSERT_TRUE(support::waitFor([&] { return display.requestCount() == 2; }));
    const auto message = display.requests().constLast();
    EXPECT_EQ(message.path, "/showAD");
    EXPECT_EQ(QJsonDocument::fromJson(message.body)["url"].toString(),
              "ads://127.0.0.1:9?stream=7&key=key%20of%20the%20stream");
}

TEST_F(IndependentService, Is_not_believed_when_its_answer_was_changed_on_its_way)
{
    start({"tamper"});
    EXPECT_TRUE(waitForLine("Ошибка декодирования ответа от сервера: illegal value"));
}
