// Pictures: what the display asks for, at once or when the store has loaded it.

#include "PluginFixture.h"

#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QMetaEnum>

#include <thread>

namespace {

const QByteArray png = QByteArray::fromHex("89504e470d0a1a0a0000000d49484452");
const QByteArray otherPng = png + "newer";

const ImageId code(ImageId::GoodsCode, "100");
const ImageId otherCode(ImageId::GoodsCode, "101");
const ImageId barcode(ImageId::Barcode, "4600000000000");

QString uriOf(const QByteArray &content)
{
    return Image(code, content).toUri({});
}

QJsonObject requestFor(const ImageId &primary, const ImageId &fallback)
{
    return {{"type", "request"},
            {"name", "getImage"},
            {"data", QJsonObject{{"GoodsCode", primary.toJson()}, {"Barcode", fallback.toJson()}}}};
}

view::Message answer(const ImageId &id, const QString &uri)
{
    return {view::Message::Type::ImageData, {{"id", id.toJson().toVariantMap()}, {"uri", uri}}};
}

class Images : public PluginFixture
{
protected:
    void know(const ImageId &id, const QByteArray &content = {}) const
    {
        host.images().store(Image(id, content));
    }
    void request(const ImageId &primary, const ImageId &fallback = barcode) const
    {
        connector->processGetImageRequest(requestFor(primary, fallback));
    }
    QList<view::Message> sent() const { return connector->takeSent(); }
};

TEST_F(Images, A_known_and_loaded_picture_is_sent_at_once)
{
    know(code, png);
    request(code);
    EXPECT_EQ(sent(), QList{answer(code, uriOf(png))});
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

TEST_F(Images, A_picture_that_is_not_loaded_is_answered_when_it_is_and_again_when_it_is_loaded_anew)
{
    know(code);
    request(code);
    EXPECT_TRUE(sent().isEmpty());
    EXPECT_TRUE(connector->isAwaitingLoadImage(code));

    connector->onImageLoaded(Image(code, png));
    EXPECT_EQ(sent(), QList{answer(code, uriOf(png))});
    EXPECT_FALSE(connector->isAwaitingLoadImage(code));

    connector->onImageLoaded(Image(code, otherPng));
    EXPECT_EQ(sent(), QList{answer(code, uriOf(otherPng))});
}

TEST_F(Images, A_fallback_that_is_not_loaded_is_answered_under_the_name_of_the_picture_asked_for)
{
    know(barcode);
    request(code);
    EXPECT_TRUE(sent().isEmpty());
    EXPECT_FALSE(connector->isAwaitingLoadImage(code));

    connector->onImageLoaded(Image(barcode, png));
    EXPECT_EQ(sent(), QList{answer(code, uriOf(png))});
    // It was sent as the other picture, so a fallback that is loaded anew is nobody's.
    connector->onImageLoaded(Image(barcode, otherPng));
    EXPECT_TRUE(sent().isEmpty());
}

TEST_F(Images, A_known_picture_is_waited_for_although_its_fallback_is_loaded)
{
    know(code);
    know(barcode, png);
    request(code);
    EXPECT_TRUE(sent().isEmpty());
    EXPECT_TRUE(connector->isAwaitingLoadImage(code));
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

TEST_F(Images, The_later_of_two_that_wait_for_the_same_fallback_is_answered)
{
    know(barcode);
    request(code);
    request(otherCode);
    connector->onImageLoaded(Image(barcode, png));
    EXPECT_EQ(sent(), QList{answer(otherCode, uriOf(png))});
}

TEST_F(Images, One_that_is_awaited_for_another_is_not_sent_again_for_itself)
{
    request(barcode, barcode); // unknown yet, and answered as such
    know(barcode);
    request(code);
    sent();
    connector->onImageLoaded(Image(barcode, png));
    EXPECT_EQ(sent(), QList{answer(code, uriOf(png))});
}

TEST_F(Images, The_lock_is_free_while_an_answer_is_queued)
{
    class LockingConnector : public RecordingConnector
    {
    public:
        void addMessage(const view::Message &message) override
        {
            isAwaitingLoadImage(code); // would never return while this thread holds the lock
            RecordingConnector::addMessage(message);
        }
    };
    LockingConnector locking;
    know(code);
    locking.processGetImageRequest(requestFor(code, barcode));
    locking.onImageLoaded(Image(code, png));
    locking.onImageLoaded(Image(code, png));
    locking.processGetImageRequest(requestFor(otherCode, barcode));
    EXPECT_EQ(locking.sent.size(), 3);
}

TEST_F(Images, A_loaded_picture_that_nobody_asked_for_is_not_sent)
{
    connector->onImageLoaded(Image(code, png));
    EXPECT_TRUE(sent().isEmpty());
}

TEST_F(Images, A_loaded_picture_that_was_answered_as_unknown_is_sent)
{
    request(code);
    sent();
    connector->onImageLoaded(Image(code, png));
    EXPECT_EQ(sent(), QList{answer(code, uriOf(png))});
}

TEST_F(Images, A_picture_that_was_unloaded_again_is_sent_without_an_address)
{
    know(code, png);
    request(code);
    sent();
    connector->onImageLoaded(Image(code));
    EXPECT_EQ(sent(), QList{answer(code, "")});
}

TEST_F(Images, Another_receipt_forgets_what_was_sent_but_not_what_is_waited_for)
{
    know(code, png);
    know(otherCode);
    request(code);
    request(otherCode);
    connector->setDocument({});
    sent();

    connector->onImageLoaded(Image(code, otherPng));
    EXPECT_TRUE(sent().isEmpty());
    connector->onImageLoaded(Image(otherCode, png));
    EXPECT_EQ(sent(), QList{answer(otherCode, uriOf(png))});
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

TEST_F(Images, The_helpers_keep_take_and_replace_what_is_waited_for)
{
    EXPECT_FALSE(connector->isAwaitingLoadImage(barcode));
    EXPECT_EQ(connector->getAwaitingLoadImage(barcode), ImageId());
    connector->addAwaitingLoadImage(barcode, code);
    connector->addAwaitingLoadImage(barcode, otherCode);
    EXPECT_TRUE(connector->isAwaitingLoadImage(barcode));
    EXPECT_FALSE(connector->isAwaitingLoadImage(code));
    EXPECT_EQ(connector->getAwaitingLoadImage(barcode), otherCode);
    EXPECT_FALSE(connector->isAwaitingLoadImage(barcode));
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

TEST_F(Images, One_that_is_loaded_on_another_thread_is_sent_from_the_plugins_own)
{
    class ThreadNotingConnector : public RecordingConnector
    {
    public:
        void sendImage(const ImageId &id, const QString &uri) override
        {
            sentFrom = QThread::currentThread();
            RecordingConnector::sendImage(id, uri);
        }
        QThread *sentFrom = nullptr;
    };
    host.config().setValue("View.Style:showImages", true);
    ThreadNotingConnector noting;
    noting.init();
    know(code);
    noting.processGetImageRequest(requestFor(code, barcode));
    noting.takeSent();

    std::thread([this] { Q_EMIT host.images().imageLoaded(Image(code, png)); }).join();
    EXPECT_TRUE(noting.sent.isEmpty()) << "it was handled on the other thread";
    EXPECT_TRUE(support::waitFor([&] { return !noting.sent.isEmpty(); }));
    EXPECT_EQ(noting.sent, QList{answer(code, uriOf(png))});
    EXPECT_EQ(noting.sentFrom, QThread::currentThread());
}

TEST_F(Images, Without_pictures_on_the_display_one_that_is_not_loaded_is_never_answered)
{
    host.config().setValue("View.Style:showImages", false);
    connector->init();
    know(code);
    connector->takeSent();
    request(code);
    know(code, png);
    support::letPass(std::chrono::milliseconds(20));
    EXPECT_TRUE(sent().isEmpty());
    EXPECT_TRUE(connector->isAwaitingLoadImage(code));
}

TEST_F(Images, After_the_end_a_picture_that_is_loaded_anew_is_still_queued)
{
    host.config().setValue("View.Style:showImages", true);
    connector->init();
    know(code, png);
    request(code);
    connector->deinit();
    connector->takeSent();
    know(code, otherPng);
    EXPECT_EQ(sent(), QList{answer(code, uriOf(otherPng))});
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
