#include "PictureSamples.h"

#include <ImageDao.h>

#include <support/LogCapture.h>
#include <support/PrintQt.h>
#include <support/Wait.h>

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QThread>

#include <memory>

namespace {

class ImageDaoFiles : public testing::Test
{
protected:
    ImageDaoFiles() { write(file, one); }

    bool waitForAnnounced(qsizetype count)
    {
        return support::waitFor([&] { return spy.size() == count; });
    }
    void expectQuiet(qsizetype announced)
    {
        support::letPass(std::chrono::milliseconds(400));
        EXPECT_EQ(spy.size(), announced);
    }

    const ImageId milk{ImageId::GoodsCode, "100"};
    const QByteArray one = svg("1");
    const QByteArray two = svg("2");

    const support::LogCapture log;
    const QTemporaryDir folder;
    const QString file = folder.filePath("a.svg");
    std::unique_ptr<ImageDao> dao = std::make_unique<ImageDao>();
    QSignalSpy spy{dao.get(), &ImageDao::imageLoaded};
};

} // namespace

TEST_F(ImageDaoFiles, Are_never_null)
{
    dao->addFile(milk, folder.filePath("none.svg"));
    ASSERT_TRUE(dao->findImage(milk));
    EXPECT_EQ(dao->findImage(milk)->value(), "");
    dao->addFile(milk, file);
    ASSERT_TRUE(dao->findImage(milk));
    EXPECT_EQ(dao->findImage(milk)->value(), milk.value());
    EXPECT_EQ(dao->findImage(milk)->toUri({}), "");
    ASSERT_TRUE(dao->findImage({ImageId::Barcode, "1"}));
    EXPECT_EQ(dao->findImage({ImageId::Barcode, "1"})->value(), "");
}

TEST_F(ImageDaoFiles, Are_announced_on_the_stores_thread_when_they_are_loaded)
{
    QThread *thread = nullptr;
    QObject::connect(dao.get(), &ImageDao::imageLoaded, [&] { thread = QThread::currentThread(); });
    dao->addFile(milk, file);
    dao->findImage(milk);
    EXPECT_EQ(spy.size(), 0);
    ASSERT_TRUE(waitForAnnounced(1));
    EXPECT_EQ(thread, dao->thread());
    EXPECT_EQ(spy[0][0].value<Image>().toUri({}), Image(milk, one).toUri({}));
    EXPECT_EQ(dao->findImage(milk)->toUri({}), Image(milk, one).toUri({}));
}

TEST_F(ImageDaoFiles, Are_announced_anew_when_they_change)
{
    dao->addFile(milk, file);
    dao->findImage(milk);
    ASSERT_TRUE(waitForAnnounced(1));
    replace(file, two);
    ASSERT_TRUE(waitForAnnounced(2));
    EXPECT_EQ(dao->findImage(milk)->toUri({}), Image(milk, two).toUri({}));
}

TEST_F(ImageDaoFiles, Give_way_to_a_picture_that_is_stored)
{
    dao->addFile(milk, file);
    dao->store(Image(milk, two));
    EXPECT_EQ(spy.size(), 1);
    EXPECT_EQ(dao->findImage(milk)->toUri({}), Image(milk, two).toUri({}));
    replace(file, svg("3"));
    expectQuiet(1);
}

TEST_F(ImageDaoFiles, Give_way_to_a_picture_that_is_known_but_not_loaded)
{
    dao->addFile(milk, file);
    dao->findImage(milk);
    dao->store(Image(milk));
    expectQuiet(0);
    EXPECT_EQ(dao->findImage(milk)->value(), milk.value());
    EXPECT_FALSE(dao->findImage(milk)->isLoaded());
    replace(file, two);
    expectQuiet(0);
    EXPECT_FALSE(dao->findImage(milk)->isLoaded());
}

TEST_F(ImageDaoFiles, Take_the_place_of_a_picture_that_was_stored)
{
    dao->store(Image(milk, two));
    dao->addFile(milk, file);
    EXPECT_FALSE(dao->findImage(milk)->isLoaded());
    ASSERT_TRUE(waitForAnnounced(2));
    EXPECT_EQ(dao->findImage(milk)->toUri({}), Image(milk, one).toUri({}));

    dao->addFile(milk, folder.filePath("none.svg"));
    EXPECT_EQ(dao->findImage(milk)->value(), "");
}

TEST_F(ImageDaoFiles, Being_read_are_not_announced_once_the_store_is_gone)
{
    for (const auto *name : {"1", "2", "3"}) {
        const auto slow = folder.filePath(name);
        write(slow, encoded("PNG", Qt::red, QSize(2000, 2000)));
        dao->addFile({ImageId::GoodsCode, name}, slow);
        dao->findImage({ImageId::GoodsCode, name});
    }
    dao.reset();
    expectQuiet(0);
}

TEST_F(ImageDaoFiles, Are_kept_up_to_a_bound_and_loaded_again_beyond_it)
{
    // uncompressed, so that nine of them exceed what is kept
    const auto large = encoded("BMP", Qt::red, QSize(1600, 1700));
    ASSERT_LT(large.size(), 8 * 1024 * 1024);
    ASSERT_GT(9 * large.size(), 64 * 1024 * 1024);
    QList<ImageId> ids;
    for (int number = 1; number <= 9; ++number) {
        ids.append({ImageId::GoodsCode, QString::number(number)});
        const auto name = folder.filePath(ids.last().value());
        write(name, large);
        dao->addFile(ids.last(), name);
        dao->findImage(ids.last());
    }
    ASSERT_TRUE(waitForAnnounced(9));
    EXPECT_TRUE(dao->findImage(ids[8])->isLoaded());
    EXPECT_TRUE(dao->findImage(ids[1])->isLoaded());
    EXPECT_FALSE(dao->findImage(ids[0])->isLoaded());
    ASSERT_TRUE(waitForAnnounced(10));
    EXPECT_EQ(spy[9][0].value<Image>().value(), ids[0].value());
    EXPECT_TRUE(dao->findImage(ids[0])->isLoaded());
}
