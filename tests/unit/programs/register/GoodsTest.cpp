#include <register/Goods.h>

#include <ConfigError.h>

#include <support/PrintQt.h>

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class GoodsTest : public testing::Test
{
protected:
    Goods read(const QByteArray &toml) const
    {
        QFile file(fileName);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(toml);
        file.close();
        return Goods::fromFile(fileName);
    }

    /// What is wrong with the file, without its name at the start.
    QString errorOf(const QByteArray &toml) const
    {
        try {
            read(toml);
        } catch (const ConfigError &error) {
            const auto text = QString::fromUtf8(error.what());
            EXPECT_TRUE(text.startsWith(fileName + u':')) << error.what();
            return text.mid(fileName.size() + 1);
        }
        return "no error";
    }

    QTemporaryDir folder;
    const QString fileName = folder.filePath("goods.toml");
};

const QByteArray tea = R"(
[[goods]]
code = "100"
barcode = "4600000001005"
name = "Чай, 100 г"
unit = "кг"
price = 6490
picture = "tea.svg"
)";

} // namespace

TEST_F(GoodsTest, Are_read_in_their_order)
{
    const auto goods = read(tea + "[[goods]]\ncode = \"7\"\nname = \"Сахар\"\nprice = 0\n");
    ASSERT_EQ(goods.all().size(), 2);
    const auto &first = goods.all()[0];
    EXPECT_EQ(first.code, "100");
    EXPECT_EQ(first.barcode, "4600000001005");
    EXPECT_EQ(first.name, "Чай, 100 г");
    EXPECT_EQ(first.unit, "кг");
    EXPECT_EQ(first.price, 6490);
    EXPECT_EQ(first.picture, "tea.svg");
    const auto &second = goods.all()[1];
    EXPECT_EQ(second.code, "7");
    EXPECT_EQ(second.barcode, "");
    EXPECT_EQ(second.unit, "шт");
    EXPECT_EQ(second.price, 0);
    EXPECT_EQ(second.picture, "");
}

TEST_F(GoodsTest, Are_found_by_code_and_by_bar_code)
{
    const auto goods = read(tea);
    ASSERT_NE(goods.find("100"), nullptr);
    EXPECT_EQ(goods.find("100")->name, "Чай, 100 г");
    EXPECT_EQ(goods.find("4600000001005"), goods.find("100"));
    EXPECT_EQ(goods.find("10"), nullptr);
    EXPECT_EQ(goods.find("1000"), nullptr);
    EXPECT_EQ(Goods().find("100"), nullptr);
}

TEST_F(GoodsTest, Without_a_bar_code_are_not_found_by_none)
{
    const auto goods = read("[[goods]]\ncode = \"7\"\nname = \"Сахар\"\nprice = 1\n");
    EXPECT_EQ(goods.find(""), nullptr);
    EXPECT_EQ(goods.find(QString()), nullptr);
}

TEST_F(GoodsTest, Need_a_code_and_a_name)
{
    EXPECT_EQ(errorOf("[[goods]]\nname = \"Чай\"\nprice = 1\n"),
              " an article has no \"code\": Чай");
    EXPECT_EQ(errorOf("[[goods]]\ncode = \"\"\nname = \"Чай\"\nprice = 1\n"),
              " an article has no \"code\": Чай");
    EXPECT_TRUE(
        errorOf("[[goods]]\ncode = \"7\"\nprice = 1\n").startsWith(" an article has no \"name\""));
}

TEST_F(GoodsTest, Need_a_price_in_whole_kopecks)
{
    const auto withPrice = [](const QByteArray &line) {
        return "[[goods]]\ncode = \"7\"\nname = \"Чай\"\n" + line;
    };
    for (const auto *line : {"", "price = -1\n", "price = \"many\"\n", "price = [1]\n"})
        EXPECT_EQ(errorOf(withPrice(line)), " the article \"7\" has no price in whole kopecks")
            << line;
}

TEST_F(GoodsTest, Are_refused_when_there_are_none)
{
    for (const auto *toml : {"", "[shop]\nname = \"x\"\n", "goods = []\n"})
        EXPECT_EQ(errorOf(toml), " no goods in it: add tables named [[goods]]") << toml;
}

TEST_F(GoodsTest, Are_refused_with_line_and_column_when_the_file_is_broken)
{
    EXPECT_TRUE(errorOf("[[goods]]\ncode = \n").startsWith("2:")) << "see the error's start";
}

TEST_F(GoodsTest, Are_refused_when_the_file_is_missing)
{
    try {
        Goods::fromFile(fileName);
        ADD_FAILURE() << "no error";
    } catch (const ConfigError &error) {
        EXPECT_TRUE(QString(error.what()).startsWith(fileName + ": cannot be read: "))
            << error.what();
    }
}
