#include <ImageDao.h>

#include <support/FreshSingletons.h>
#include <support/PrintQt.h>

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace {

const ImageId milk(ImageId::GoodsCode, QStringLiteral("100"));
const ImageId bread(ImageId::GoodsCode, QStringLiteral("200"));
const QByteArray content = "<svg xmlns=\"http://www.w3.org/2000/svg\"/>";

} // namespace

TEST(ImageDao, Gives_an_image_without_a_name_for_an_unknown_one)
{
    const ImageDao dao;
    const auto found = dao.findImage(milk);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->value(), QString());
    EXPECT_EQ(found->toUri(QString()), QString());
}

TEST(ImageDao, Finds_what_was_stored)
{
    ImageDao dao;
    dao.store(Image(milk, content));
    dao.store(Image(bread));
    EXPECT_EQ(static_cast<ImageId>(*dao.findImage(milk)), milk);
    EXPECT_TRUE(dao.findImage(milk)->isLoaded());
    EXPECT_EQ(static_cast<ImageId>(*dao.findImage(bread)), bread);
    EXPECT_FALSE(dao.findImage(bread)->isLoaded());
    EXPECT_EQ(dao.findImage(ImageId(ImageId::Barcode, milk.value()))->value(), QString());
}

TEST(ImageDao, Replaces_the_image_with_the_same_identifier)
{
    ImageDao dao;
    dao.store(Image(milk, content));
    const auto old = dao.findImage(milk);
    dao.store(Image(milk));
    EXPECT_FALSE(dao.findImage(milk)->isLoaded());
    EXPECT_TRUE(old->isLoaded()); // whoever holds the old one keeps it
}

TEST(ImageDao, Announces_each_loaded_image_once_and_others_never)
{
    ImageDao dao;
    QSignalSpy loaded(&dao, &ImageDao::imageLoaded);
    dao.store(Image(milk));
    EXPECT_EQ(loaded.count(), 0);

    dao.store(Image(milk, content));
    ASSERT_EQ(loaded.count(), 1);
    const auto announced = loaded.at(0).at(0).value<Image>();
    EXPECT_EQ(announced.value(), milk.value());
    EXPECT_TRUE(announced.isLoaded());

    dao.findImage(milk);
    EXPECT_EQ(loaded.count(), 1);
    dao.store(Image(milk, content)); // loaded anew
    EXPECT_EQ(loaded.count(), 2);
}

TEST(ImageDao, Knows_the_image_by_the_time_it_is_announced)
{
    ImageDao dao;
    bool known = false;
    QObject::connect(&dao, &ImageDao::imageLoaded, &dao,
                     [&](const Image &image) { known = dao.findImage(image)->isLoaded(); });
    dao.store(Image(milk, content));
    EXPECT_TRUE(known);
}

TEST(ImageDao, Is_a_singleton_that_a_host_may_replace)
{
    const support::FreshSingletons fresh;
    fresh.images().store(Image(milk, content));
    EXPECT_TRUE(Singleton<ImageDao>::instance().findImage(milk)->isLoaded());
    Singleton<ImageDao>::replace(std::make_unique<ImageDao>());
    EXPECT_FALSE(Singleton<ImageDao>::instance().findImage(milk)->isLoaded());
}
