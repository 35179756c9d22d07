#include <register/GoodsPictures.h>

#include <register/Goods.h>

#include <PictureFile.h>

#include <support/FreshSingletons.h>
#include <support/PrintQt.h>
#include <support/Wait.h>

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

const QByteArray picture = "<svg xmlns=\"http://www.w3.org/2000/svg\"/>";

class GoodsPictures : public testing::Test
{
protected:
    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    /// Adds the pictures of a catalogue with one article, which has these further lines.
    void add(const QByteArray &lines) const
    {
        write("goods.toml", "[[goods]]\ncode = \"100\"\nname = \"Чай\"\nprice = 1\n" + lines);
        addGoodsPictures(Goods::fromFile(folder.filePath("goods.toml")), folder.path());
    }

    QString found(const ImageId &id) const { return singletons.images().findImage(id)->value(); }

    const support::FreshSingletons singletons;
    const QTemporaryDir folder;
    const ImageId code{ImageId::GoodsCode, "100"};
    const ImageId barcode{ImageId::Barcode, "46"};
};

} // namespace

TEST_F(GoodsPictures, Are_known_by_code_and_by_bar_code_and_loaded_when_asked_for)
{
    write("tea.svg", picture);
    add("barcode = \"46\"\npicture = \"tea.svg\"\n");
    QSignalSpy announced(&singletons.images(), &ImageDao::imageLoaded);
    for (const auto &id : {code, barcode}) {
        const auto image = singletons.images().findImage(id);
        EXPECT_EQ(static_cast<const ImageId &>(*image), id);
        EXPECT_FALSE(image->isLoaded());
    }
    ASSERT_TRUE(support::waitFor([&] { return announced.size() == 2; }));
    for (const auto &id : {code, barcode})
        EXPECT_EQ(singletons.images().findImage(id)->toUri({}), Image(id, picture).toUri({}));
}

TEST_F(GoodsPictures, Are_unknown_until_their_files_are_there)
{
    add("picture = \"tea.svg\"\n");
    EXPECT_EQ(found(code), "");
    write("tea.svg", picture);
    EXPECT_EQ(found(code), "100");
}

TEST_F(GoodsPictures, May_have_absolute_names)
{
    write("tea.svg", picture);
    add("picture = \"" + folder.filePath("tea.svg").toUtf8() + "\"\n");
    EXPECT_EQ(found(code), "100");
}

TEST_F(GoodsPictures, Are_not_looked_for_where_goods_have_none)
{
    add("barcode = \"46\"\n");
    EXPECT_EQ(found(code), "");
    EXPECT_EQ(found(barcode), "");
}

TEST_F(GoodsPictures, Are_not_known_by_the_bar_code_that_goods_lack)
{
    write("tea.svg", picture);
    add("picture = \"tea.svg\"\n");
    EXPECT_EQ(found(code), "100");
    EXPECT_EQ(found({ImageId::Barcode, ""}), "");
}

TEST(SampleShop, Has_a_picture_that_can_be_shown_for_each_of_its_goods)
{
    const auto goods = Goods::fromFile(DEMO "/goods.toml");
    for (const auto &item : goods.all())
        EXPECT_EQ(readPictureFile(DEMO "/pictures/" + item.picture).problem, "")
            << item.picture.toStdString();
}
