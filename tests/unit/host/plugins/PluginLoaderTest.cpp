#include <PluginLoader.h>

#include <BasicPlugin.h>
#include <DocumentWatcher.h>

#include <support/FreshSingletons.h>
#include <support/PrintQt.h>

#include <QDir>
#include <QFile>
#include <QJsonObject>
#include <QPointer>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using testing::StartsWith;

const auto viewConnector = QStringLiteral(VIEWCONNECTOR_FILE);

std::string errorOf(const QString &fileName)
{
    try {
        const PluginLoader loader(fileName);
    } catch (const PluginError &error) {
        return error.what();
    }
    return "no error";
}

} // namespace

TEST(PluginLoader, Says_that_a_file_is_missing)
{
    const auto name = QStringLiteral("/no/such/плагин.so");
    EXPECT_EQ(errorOf(name), name.toStdString() + ": no such plug-in file");
}

TEST(PluginLoader, Refuses_what_is_no_Qt_plug_in)
{
    const QTemporaryDir folder;
    QFile text(folder.filePath(QStringLiteral("text.so")));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("this is no library");
    text.close();
    QFile empty(folder.filePath(QStringLiteral("empty.so")));
    ASSERT_TRUE(empty.open(QIODevice::WriteOnly));
    empty.close();

    for (const auto &name :
         {text.fileName(), empty.fileName(), folder.path(), QStringLiteral(HOST_LIBRARY_FILE)}) {
        SCOPED_TRACE(name.toStdString());
        EXPECT_THAT(errorOf(name), StartsWith(name.toStdString() + ": not a Qt plug-in: "));
    }
}

TEST(PluginLoader, Refuses_a_plug_in_of_another_interface_and_names_both)
{
    const auto name = QStringLiteral(FOREIGN_INTERFACE_FILE);
    EXPECT_EQ(errorOf(name), name.toStdString() + ": its interface is \"org.example.OtherPlugin\", "
                                                  "expected \"su.tavro.AbstractPlugin\"");
}

TEST(PluginLoader, Refuses_an_object_that_is_no_plug_in_of_this_host)
{
    const auto name = QStringLiteral(FOREIGN_OBJECT_FILE);
    EXPECT_EQ(errorOf(name), name.toStdString() + ": its object is not a plug-in of this host");
}

TEST(PluginLoader, Keeps_no_library_whose_object_it_refuses)
{
    const auto name = QStringLiteral(FOREIGN_OBJECT_FILE);
    errorOf(name);
    EXPECT_FALSE(QPluginLoader(name).isLoaded());
}

TEST(PluginLoader, Refuses_a_plug_in_that_cannot_be_linked)
{
    const QTemporaryDir folder;
    const auto name = folder.filePath(QStringLiteral("broken.so"));
    ASSERT_TRUE(QFile::copy(viewConnector, name));
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    auto content = file.readAll();
    const QByteArray needed("libregisterhost.so");
    ASSERT_TRUE(content.contains(needed));
    file.seek(0);
    file.write(content.replace(needed, "libregisterh0st.so"));
    file.close();
    EXPECT_THAT(errorOf(name), StartsWith(name.toStdString() + ": cannot be loaded: "));
    EXPECT_THAT(errorOf(name), HasSubstr("libregisterh0st.so"));
}

TEST(PluginLoader, Loads_the_plug_in_of_this_project)
{
    const support::FreshSingletons fresh;
    PluginLoader loader(viewConnector);
    ASSERT_NE(loader.plugin(), nullptr);
    ASSERT_NE(loader.object(), nullptr);
    ASSERT_NE(loader.documentWatcher(), nullptr);
    EXPECT_STREQ(loader.object()->metaObject()->className(), "ViewConnector");
    EXPECT_EQ(dynamic_cast<BasicPlugin *>(loader.object()), loader.plugin());
    EXPECT_EQ(dynamic_cast<DocumentWatcher *>(loader.object()), loader.documentWatcher());
}

TEST(PluginLoader, Loads_by_a_relative_name_too)
{
    const support::FreshSingletons fresh;
    const PluginLoader loader(QDir::current().relativeFilePath(viewConnector));
    EXPECT_NE(loader.plugin(), nullptr);
}

TEST(PluginLoader, Destroys_the_object_when_it_unloads)
{
    const support::FreshSingletons fresh;
    PluginLoader loader(viewConnector);
    const QPointer<QObject> watch = loader.object();
    loader.unload();
    EXPECT_TRUE(watch.isNull());
    EXPECT_EQ(loader.plugin(), nullptr);
    EXPECT_EQ(loader.object(), nullptr);
    EXPECT_EQ(loader.documentWatcher(), nullptr);
    loader.unload(); // nothing more to do
}

TEST(PluginLoader, Destroys_the_object_with_itself_and_can_load_again)
{
    const support::FreshSingletons fresh;
    for (int round = 0; round < 3; ++round) {
        QPointer<QObject> watch;
        {
            const PluginLoader loader(viewConnector);
            watch = loader.object();
            ASSERT_FALSE(watch.isNull());
        }
        EXPECT_TRUE(watch.isNull());
    }
}

TEST(PluginLoader, Finds_the_interface_and_the_class_in_the_metadata_of_the_plug_in)
{
    const auto metadata = QPluginLoader(viewConnector).metaData();
    EXPECT_EQ(metadata[QStringLiteral("IID")].toString(),
              QStringLiteral("su.tavro.AbstractPlugin"));
    EXPECT_EQ(metadata[QStringLiteral("className")].toString(), QStringLiteral("ViewConnector"));
}
