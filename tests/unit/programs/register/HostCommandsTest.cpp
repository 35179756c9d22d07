#include "TillFixture.h"

#include <register/HostCommands.h>

#include <ImageDao.h>
#include <Tr.h>

#include <support/Wait.h>

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace {

class HostCommands : public TillFixture
{
protected:
    HostCommands() { addHostCommands(commands, till, pictures.path()); }

    void writePicture(const QString &name, const QByteArray &content) const
    {
        QFile file(pictures.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QVariant setting(const QString &key) const { return singletons.config().value(key); }

    QTemporaryDir pictures;
    const ImageId goods100{ImageId::GoodsCode, "100"};
};

} // namespace

TEST_F(HostCommands, Event_reaches_the_listeners_of_its_code)
{
    till.init();
    calls();
    does(R"({"do":"event","code":117,"arguments":{"dialogId":5,"title":"Цены","list":[1,"a"]}})");
    EXPECT_EQ(calls(), QStringList("event 117"));
    EXPECT_EQ(arguments(),
              (QVariantMap{{"dialogId", 5}, {"title", "Цены"}, {"list", QVariantList{1, "a"}}}));
}

TEST_F(HostCommands, Event_needs_no_arguments)
{
    till.init();
    does(R"({"do":"event","code":117,"arguments":{"a":1}})");
    does(R"({"do":"event","code":103})");
    EXPECT_TRUE(arguments().isEmpty());
}

TEST_F(HostCommands, Event_that_nobody_listens_to_is_fine)
{
    does(R"({"do":"event","code":117})");
    till.init();
    calls();
    does(R"({"do":"event","code":9999})");
    does(R"({"do":"event","code":-1,"arguments":{}})");
    EXPECT_TRUE(calls().isEmpty());
}

TEST_F(HostCommands, Event_turns_a_text_in_several_languages_into_one)
{
    till.init();
    does(R"({"do":"event","code":117,"arguments":{"title":{"tr":{"ru":"Цены","en":"Prices"}}}})");
    const auto title = arguments()["title"];
    ASSERT_EQ(title.typeId(), qMetaTypeId<tr::Tr>());
    EXPECT_EQ(title.value<tr::Tr>(), tr::Tr({{"ru", "Цены"}, {"en", "Prices"}}));
}

TEST_F(HostCommands, Event_leaves_an_object_that_only_resembles_such_a_text)
{
    till.init();
    does(R"({"do":"event","code":117,
             "arguments":{"a":{"tr":"x"},"b":{"tr":{},"more":1},"c":{"ru":"x"},"d":null}})");
    EXPECT_EQ(arguments()["a"].toMap(), (QVariantMap{{"tr", "x"}}));
    EXPECT_EQ(arguments()["b"].toMap().size(), 2);
    EXPECT_EQ(arguments()["c"].toMap(), (QVariantMap{{"ru", "x"}}));
    EXPECT_TRUE(arguments().contains("d"));
    EXPECT_TRUE(arguments()["d"].isNull());
}

TEST_F(HostCommands, Action_runs_the_triggers_that_are_registered_for_it)
{
    till.init();
    calls();
    does(R"({"do":"action","context":6,"action":131})");
    does(R"({"do":"action","context":1,"action":131})");
    does(R"({"do":"action","context":1,"action":197})");
    does(R"({"do":"action","context":42,"action":137})");
    EXPECT_EQ(calls(), (QStringList{"action 6 131", "action 1 197", "action 42 137"}));
}

TEST_F(HostCommands, Action_that_nobody_listens_to_is_fine)
{
    does(R"({"do":"action","context":6,"action":131})");
    till.init();
    calls();
    does(R"({"do":"action","context":6,"action":9999})");
    EXPECT_TRUE(calls().isEmpty());
}

TEST_F(HostCommands, Setting_is_written_with_its_type)
{
    does(R"({"do":"setting","key":"View.Logic:showQrCode","value":false})");
    does(R"({"do":"setting","key":"a:n","value":7})");
    does(R"({"do":"setting","key":"a:f","value":1.5})");
    does(R"({"do":"setting","key":"a:t","value":"текст"})");
    does(R"({"do":"setting","key":"a:l","value":[1,2]})");
    EXPECT_EQ(setting("View.Logic:showQrCode"), QVariant(false));
    EXPECT_EQ(setting("a:n").toInt(), 7);
    EXPECT_EQ(setting("a:f"), QVariant(1.5));
    EXPECT_EQ(setting("a:t"), QVariant("текст"));
    EXPECT_EQ(setting("a:l").toList().size(), 2);
}

TEST_F(HostCommands, Setting_is_removed_by_null)
{
    does(R"({"do":"setting","key":"a:n","value":7})");
    does(R"({"do":"setting","key":"a:n","value":null})");
    EXPECT_FALSE(setting("a:n").isValid());
}

TEST_F(HostCommands, Image_is_loaded_and_announced_once_a_command)
{
    writePicture("x.png", "picture");
    QSignalSpy announced(&singletons.images(), &ImageDao::imageLoaded);
    does(R"({"do":"image","id":{"type":"GoodsCode","value":"100"},"file":"x.png"})");
    EXPECT_EQ(announced.size(), 1);
    const auto image = singletons.images().findImage(goods100);
    EXPECT_EQ(image->value(), "100");
    EXPECT_TRUE(image->toUri({}).endsWith(QByteArray("picture").toBase64()))
        << image->toUri({}).toStdString();
    does(R"({"do":"image","id":{"type":"GoodsCode","value":"100"},"file":"x.png"})");
    EXPECT_EQ(announced.size(), 2);
}

TEST_F(HostCommands, Image_may_have_an_absolute_path)
{
    writePicture("y.png", "other");
    const auto path = pictures.filePath("y.png").toUtf8();
    does(R"({"do":"image","id":{"type":"Barcode","value":"46"},"file":")" + path + "\"}");
    EXPECT_TRUE(singletons.images().findImage({ImageId::Barcode, "46"})->isLoaded());
}

TEST_F(HostCommands, Image_without_a_file_becomes_known_but_not_loaded)
{
    QSignalSpy announced(&singletons.images(), &ImageDao::imageLoaded);
    does(R"({"do":"image","id":{"type":"GoodsCode","value":"100"}})");
    const auto image = singletons.images().findImage(goods100);
    EXPECT_EQ(image->value(), "100");
    EXPECT_FALSE(image->isLoaded());
    EXPECT_EQ(announced.size(), 0);
}

TEST_F(HostCommands, Image_takes_the_place_of_a_goods_own_picture)
{
    writePicture("goods.svg", "<svg xmlns=\"http://www.w3.org/2000/svg\"/>");
    writePicture("x.png", "picture");
    singletons.images().addFile(goods100, pictures.filePath("goods.svg"));
    singletons.images().findImage(goods100);
    QSignalSpy announced(&singletons.images(), &ImageDao::imageLoaded);

    does(R"({"do":"image","id":{"type":"GoodsCode","value":"100"},"file":"x.png"})");
    EXPECT_EQ(announced.size(), 1);
    does(R"({"do":"image","id":{"type":"GoodsCode","value":"100"}})");
    support::letPass(
        std::chrono::milliseconds(100)); // the goods' own picture would be loaded by now
    EXPECT_EQ(announced.size(), 1);
    EXPECT_EQ(singletons.images().findImage(goods100)->value(), "100");
    EXPECT_FALSE(singletons.images().findImage(goods100)->isLoaded());
}

TEST_F(HostCommands, Image_starts_from_the_current_folder_when_no_other_is_given)
{
    writePicture("z.png", "z");
    Commands plain;
    addHostCommands(plain, till, {});
    const auto name = QDir::current().relativeFilePath(pictures.filePath("z.png"));
    plain.run({{"do", "image"}, {"id", goods100.toJson()}, {"file", name}});
    EXPECT_TRUE(singletons.images().findImage(goods100)->isLoaded());
}

TEST_F(HostCommands, Init_and_deinit_reach_the_plugin)
{
    does(R"({"do":"init"})");
    does(R"({"do":"deinit"})");
    does(R"({"do":"init"})");
    EXPECT_EQ(calls(), (QStringList{"init", "deinit", "init"}));
}

TEST_F(HostCommands, Init_and_deinit_fail_when_the_plugin_says_so)
{
    does(R"({"do":"setting","key":"RecordingPlugin:init","value":false})");
    EXPECT_EQ(run(R"({"do":"init"})"), "the plug-in's init() returned false");
    does(R"({"do":"setting","key":"RecordingPlugin:deinit","value":false})");
    EXPECT_EQ(run(R"({"do":"deinit"})"), "the plug-in's deinit() returned false");
}
