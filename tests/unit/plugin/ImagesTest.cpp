// Pictures: what the display asks for, and the answer that can be given at once.

#include "ImagesFixture.h"

#include <QDirIterator>
#include <QFile>
#include <QMetaEnum>

namespace {

using Images = ImagesFixture;

TEST_F(Images, A_known_and_loaded_picture_is_sent_at_once)
{
    know(code, png);
    request(code);
    EXPECT_EQ(sent(), QList{answer(code, uriOf(png))});
}

TEST_F(Images, A_picture_that_is_asked_for_many_times_is_in_memory_once)
{
    know(code, png);
    request(code);
    request(code);
    const auto messages = sent();
    ASSERT_EQ(messages.size(), 2);
    EXPECT_EQ(messages[0].data["uri"].toString().constData(),
              messages[1].data["uri"].toString().constData());
}

TEST_F(Images, The_fallback_is_not_looked_up_if_the_picture_is_known)
{
    know(code, png);
    know(barcode, otherPng);
    request(code);
    EXPECT_EQ(sent(), QList{answer(code, uriOf(png))});
}

TEST_F(Images, A_loaded_fallback_is_sent_under_the_name_of_the_picture_asked_for)
{
    know(barcode, png);
    request(code);
    EXPECT_EQ(sent(), QList{answer(code, uriOf(png))});
    EXPECT_EQ(connector->sentImages, QSet{code});
}

TEST_F(Images, An_unknown_picture_is_answered_at_once_without_an_address)
{
    request(code);
    EXPECT_EQ(sent(), QList{answer(code, "")});
    EXPECT_TRUE(connector->awaitingImages.lock()->isEmpty());
}

/// A store that has a picture to stand for those that it does not know.
class PlaceholderDao : public ImageDao
{
public:
    QSharedPointer<Image> findImage(const ImageId &id) const override
    {
        asked.append(id);
        return QSharedPointer<Image>::create(ImageId(), png);
    }
    mutable QList<ImageId> asked;
};

TEST_F(Images, An_unknown_picture_is_answered_with_the_address_that_the_store_gives_for_it)
{
    auto dao = std::make_unique<PlaceholderDao>();
    const auto &asked = dao->asked;
    Singleton<ImageDao>::replace(std::move(dao));
    request(code);
    EXPECT_EQ(sent(), QList{answer(code, uriOf(png))});
    EXPECT_EQ(asked, (QList{code, barcode}));
}

TEST_F(Images, Missing_and_misshapen_data_are_looked_up_as_an_empty_picture)
{
    const QJsonValue rows[] = {QJsonValue::Undefined,
                               QJsonValue::Null,
                               1,
                               "text",
                               QJsonArray{1},
                               QJsonObject{},
                               QJsonObject{{"GoodsCode", "100"}},
                               QJsonObject{{"goodscode", code.toJson()}}};
    for (const auto &data : rows) {
        QJsonObject object{{"type", "request"}, {"name", "getImage"}};
        object.insert("data", data);
        connector->processGetImageRequest(object);
        EXPECT_EQ(sent(), QList{answer(ImageId(), "")});
    }
    const QJsonValue fallbacks[] = {QJsonValue::Undefined, "text", 1, QJsonArray{}};
    for (const auto &fallback : fallbacks) {
        QJsonObject data{{"GoodsCode", code.toJson()}};
        data.insert("Barcode", fallback);
        connector->processGetImageRequest({{"data", data}});
        EXPECT_EQ(sent(), QList{answer(code, "")});
    }
    EXPECT_EQ(log.textsOf("viewconnector"), QStringList());
}

TEST(PluginSources, The_kinds_of_identifier_are_named_by_the_host_alone)
{
    QDirIterator files(PLUGIN_SOURCES, {"*.h", "*.cpp"}, QDir::Files);
    int count = 0;
    for (; files.hasNext(); ++count) {
        QFile file(files.next());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray text = file.readAll();
        for (int kind = 0; kind < 2; ++kind) {
            const char *name = QMetaEnum::fromType<ImageId::IdType>().valueToKey(kind);
            EXPECT_FALSE(text.contains(name)) << file.fileName().toStdString();
        }
    }
    EXPECT_GT(count, 5);
}

TEST_F(Images, Every_answer_waits_in_the_order_of_the_requests)
{
    know(code, png);
    request(code);
    request(otherCode, otherCode);
    request(code);
    EXPECT_EQ(takeWaiting(),
              (QList{answer(code, uriOf(png)), answer(otherCode, ""), answer(code, uriOf(png))}));
}

TEST_F(Images, Nothing_is_logged)
{
    know(code, png);
    request(code);
    request(otherCode);
    connector->onImageLoaded(Image(code, otherPng));
    know(barcode);
    request(otherCode);
    connector->onImageLoaded(Image(barcode, png));
    EXPECT_EQ(log.textsOf("viewconnector"), QStringList());
}

} // namespace
