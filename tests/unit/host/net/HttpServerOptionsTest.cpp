#include <HttpServerOptions.h>

#include <support/FreshSingletons.h>
#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

using namespace std::chrono_literals;

class ServerOptions : public testing::Test
{
protected:
    void set(const char *name, const QVariant &value) const
    {
        fresh.config().setValue(QStringLiteral("HttpServer:") + QLatin1String(name), value);
    }

    const support::FreshSingletons fresh;
};

void expectDefaults(const HttpServerOptions &options)
{
    EXPECT_EQ(options.address, QStringLiteral("127.0.0.1"));
    EXPECT_EQ(options.maxBodyBytes, 1024 * 1024);
    EXPECT_EQ(options.maxHeaderBytes, 32 * 1024);
    EXPECT_EQ(options.maxConnections, 256);
    EXPECT_EQ(options.idleTimeout, 10s);
    EXPECT_EQ(options.headerTimeout, 10s);
    EXPECT_EQ(options.bodyTimeout, 30s);
    EXPECT_EQ(options.answerTimeout, 30s);
    EXPECT_FALSE(options.guard);
}

} // namespace

TEST_F(ServerOptions, Have_defaults_without_settings)
{
    expectDefaults(HttpServerOptions());
    expectDefaults(HttpServerOptions::fromConfig());
}

TEST_F(ServerOptions, Are_overridden_by_settings)
{
    set("address", QStringLiteral("0.0.0.0"));
    set("maxBodyBytes", 1);
    set("maxHeaderBytes", 2);
    set("maxConnections", 3);
    set("idleTimeout", 4);
    set("bodyTimeout", QStringLiteral("5"));
    set("headerTimeout", 6);
    set("answerTimeout", 7);
    set("guard", true);
    const auto options = HttpServerOptions::fromConfig();
    EXPECT_EQ(options.address, QStringLiteral("0.0.0.0"));
    EXPECT_EQ(options.maxBodyBytes, 1);
    EXPECT_EQ(options.maxHeaderBytes, 2);
    EXPECT_EQ(options.maxConnections, 3);
    EXPECT_EQ(options.idleTimeout, 4s);
    EXPECT_EQ(options.bodyTimeout, 5s);
    EXPECT_EQ(options.headerTimeout, 6s);
    EXPECT_EQ(options.answerTimeout, 7s);
    EXPECT_TRUE(options.guard);
}

TEST_F(ServerOptions, Keep_the_default_for_a_number_below_1)
{
    const QVariant values[] = {0, -1, QStringLiteral("many"), false};
    for (const auto &value : values) {
        SCOPED_TRACE(value.toString().toStdString());
        for (const auto *name : {"maxBodyBytes", "maxHeaderBytes", "maxConnections", "idleTimeout",
                                 "headerTimeout", "bodyTimeout", "answerTimeout"})
            set(name, value);
        expectDefaults(HttpServerOptions::fromConfig());
    }
}
