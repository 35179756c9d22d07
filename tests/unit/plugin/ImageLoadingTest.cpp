// Pictures: what is answered when the store has loaded it, and sent again when it is loaded anew.

#include "ImagesFixture.h"

#include <thread>

namespace {

using ImageLoading = ImagesFixture;

TEST_F(ImageLoading,
       A_picture_that_is_not_loaded_is_answered_when_it_is_and_again_when_it_is_loaded_anew)
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

TEST_F(ImageLoading,
       A_fallback_that_is_not_loaded_is_answered_under_the_name_of_the_picture_asked_for)
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

TEST_F(ImageLoading, A_known_picture_is_waited_for_although_its_fallback_is_loaded)
{
    know(code);
    know(barcode, png);
    request(code);
    EXPECT_TRUE(sent().isEmpty());
    EXPECT_TRUE(connector->isAwaitingLoadImage(code));
}

TEST_F(ImageLoading, The_later_of_two_that_wait_for_the_same_fallback_is_answered)
{
    know(barcode);
    request(code);
    request(otherCode);
    connector->onImageLoaded(Image(barcode, png));
    EXPECT_EQ(sent(), QList{answer(otherCode, uriOf(png))});
}

TEST_F(ImageLoading, One_that_is_awaited_for_another_is_not_sent_again_for_itself)
{
    request(barcode, barcode); // unknown yet, and answered as such
    know(barcode);
    request(code);
    sent();
    connector->onImageLoaded(Image(barcode, png));
    EXPECT_EQ(sent(), QList{answer(code, uriOf(png))});
}

TEST_F(ImageLoading, The_lock_is_free_while_an_answer_is_queued)
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

TEST_F(ImageLoading, A_loaded_picture_that_nobody_asked_for_is_not_sent)
{
    connector->onImageLoaded(Image(code, png));
    EXPECT_TRUE(sent().isEmpty());
}

TEST_F(ImageLoading, A_loaded_picture_that_was_answered_as_unknown_is_sent)
{
    request(code);
    sent();
    connector->onImageLoaded(Image(code, png));
    EXPECT_EQ(sent(), QList{answer(code, uriOf(png))});
}

TEST_F(ImageLoading, A_picture_that_was_unloaded_again_is_sent_without_an_address)
{
    know(code, png);
    request(code);
    sent();
    connector->onImageLoaded(Image(code));
    EXPECT_EQ(sent(), QList{answer(code, "")});
}

TEST_F(ImageLoading, Another_receipt_forgets_what_was_sent_but_not_what_is_waited_for)
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

TEST_F(ImageLoading, The_helpers_keep_take_and_replace_what_is_waited_for)
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

TEST_F(ImageLoading, One_that_is_loaded_on_another_thread_is_sent_from_the_plugins_own)
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

TEST_F(ImageLoading, Without_pictures_on_the_display_one_that_is_not_loaded_is_never_answered)
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

TEST_F(ImageLoading, After_the_end_a_picture_that_is_loaded_anew_is_still_queued)
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

} // namespace
