// The Qt plug-in entry.

#include "ProbedConnector.h"

#include <gtest/gtest.h>

#include <support/PrintQt.h>

#include <QJsonObject>
#include <QPluginLoader>
#include <QPointer>

extern "C" QObject *qt_plugin_instance();

namespace {

TEST(PluginEntry, Asked_twice_it_gives_the_same_object)
{
    const std::unique_ptr<QObject> plugin(qt_plugin_instance());
    ASSERT_NE(plugin, nullptr);
    EXPECT_EQ(qt_plugin_instance(), plugin.get());
    EXPECT_NE(dynamic_cast<ViewConnector *>(plugin.get()), nullptr);
}

TEST(PluginEntry, After_the_object_was_deleted_it_gives_a_new_one)
{
    const QPointer<QObject> first = qt_plugin_instance();
    delete first.data();
    ASSERT_TRUE(first.isNull());

    const std::unique_ptr<QObject> second(qt_plugin_instance());
    ASSERT_NE(second, nullptr);
    EXPECT_NE(dynamic_cast<ViewConnector *>(second.get()), nullptr);
    EXPECT_EQ(qt_plugin_instance(), second.get());
}

TEST(PluginEntry, The_object_has_no_parent)
{
    const std::unique_ptr<QObject> plugin(qt_plugin_instance());
    EXPECT_EQ(plugin->parent(), nullptr);
}

TEST(PluginEntry, Its_metadata_name_the_interface_and_the_class)
{
    const auto metadata = QPluginLoader(QStringLiteral(PLUGIN_FILE)).metaData();
    EXPECT_EQ(metadata.value("IID").toString(), "su.tavro.AbstractPlugin");
    EXPECT_EQ(metadata.value("className").toString(), "ViewConnector");
}

} // namespace
