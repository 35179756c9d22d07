// The library is unloaded for real, and loaded again.

#include <BasicPlugin.h>
#include <Config.h>
#include <DocumentWatcher.h>
#include <PluginLoader.h>
#include <Receipt.h>
#include <Singleton.h>

#include <support/FreshSingletons.h>
#include <support/ScriptedServer.h>
#include <support/Wait.h>

#include <QFile>
#include <QPointer>

#include <gtest/gtest.h>

namespace {

class Unloading : public testing::Test
{
protected:
    Unloading()
    {
        host.config().setValue("ViewConnector:server", display.url({}).toString());
        host.config().setValue("ViewConnector:port", 0);
        host.config().setValue("ViewConnector:interval", 1);
    }

    static bool isMapped()
    {
        QFile maps(QStringLiteral("/proc/self/maps"));
        return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("/viewconnector.so");
    }

    QByteArrayList paths() const
    {
        QByteArrayList paths;
        for (const auto &request : display.requests())
            paths.append(request.path);
        return paths;
    }

    support::FreshSingletons host;
    support::ScriptedServer display;
};

} // namespace

TEST_F(Unloading, The_object_goes_and_the_code_stays)
{
    PluginLoader loader(QStringLiteral(PLUGIN_FILE));
    const QPointer<QObject> object = loader.object();
    ASSERT_TRUE(loader.plugin()->init());
    ASSERT_FALSE(object.isNull());
    loader.unload();
    EXPECT_TRUE(object.isNull());
    EXPECT_TRUE(isMapped()); // for a thread that still ends
}

TEST_F(Unloading, A_library_that_is_loaded_again_gives_another_plugin_that_works)
{
    for (int time = 1; time <= 3; ++time) {
        PluginLoader loader(QStringLiteral(PLUGIN_FILE));
        ASSERT_TRUE(loader.plugin()->init());
        ASSERT_TRUE(support::waitFor([&] { return display.requestCount() == 2 * time - 1; }));
        loader.documentWatcher()->setDocument(QSharedPointer<Receipt>::create(1));
        ASSERT_TRUE(support::waitFor([&] { return display.requestCount() == 2 * time; }));
        loader.plugin()->deinit();
    }
    const QByteArrayList once{"/configure", "/updateDocument"};
    EXPECT_EQ(paths(), once + once + once);
}
