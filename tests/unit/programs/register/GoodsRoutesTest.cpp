#include <register/GoodsRoutes.h>

#include <register/Goods.h>

#include <pages/PageRoutes.h>

#include <support/PrintQt.h>
#include <support/RawClient.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {

const QByteArray pixel =
    QByteArray::fromBase64("R0lGODlhAQABAIAAAAAAAP///yH5BAAAAAAALAAAAAABAAEAAAIBRAA7");
const QByteArray picture = "<svg xmlns=\"http://www.w3.org/2000/svg\"/>";

class GoodsRoutesTest : public testing::Test
{
protected:
    GoodsRoutesTest()
    {
        write("goods.toml", R"(
goods = [
  { code = "100", barcode = "4600", name = "Чай", price = 1000, picture = "tea.svg" },
  { code = "1/2 ?", name = "Сахар", unit = "кг", price = 99, picture = "sugar" },
  { code = "102", name = "Пакет", price = 0 },
  { code = "103", name = "Хлеб", price = 1, picture = "none.svg" },
]
)");
        write("tea.svg", picture);
        write("sugar", pixel);
        QObject::connect(&server, &HttpServer::requestReceived,
                         [this](const RequestHeader &header, const QByteArray &content) {
                             routes.serve(server, header, content);
                         });
    }

    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    void add(const QString &imagesFolder)
    {
        addGoodsRoutes(routes, Goods::fromFile(folder.filePath("goods.toml")), imagesFolder);
    }

    support::RawClient::Answer get(const QByteArray &path) const
    {
        support::RawClient client(server.port());
        client.send("GET " + path + " HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n");
        return client.answer();
    }

    QJsonArray goods() const { return QJsonDocument::fromJson(get("/goods").body).array(); }

    const QTemporaryDir folder;
    HttpServer server{0, HttpServerOptions()};
    PageRoutes routes;
};

} // namespace

TEST_F(GoodsRoutesTest, Tell_the_catalogue_in_its_order)
{
    add(folder.path());
    const auto all = goods();
    ASSERT_EQ(all.size(), 4);
    EXPECT_EQ(all[0].toObject(),
              QJsonDocument::fromJson(R"({"code":"100","barcode":"4600","name":"Чай","unit":"шт",
                                          "price":1000,"picture":"/pictures/100"})")
                  .object());
    EXPECT_EQ(all[1]["unit"].toString(), "кг");
    EXPECT_EQ(all[1]["barcode"].toString(), "");
}

TEST_F(GoodsRoutesTest, Serve_each_picture_with_the_type_of_its_content)
{
    add(folder.path());
    const auto tea = get("/pictures/100");
    EXPECT_EQ(tea.status, 200);
    EXPECT_EQ(tea.body, picture);
    EXPECT_TRUE(tea.header.contains("Content-Type: image/svg+xml\r\n")) << tea.header.toStdString();
    const auto path = goods().at(1)["picture"].toString().toLatin1();
    EXPECT_EQ(path, "/pictures/1/2%20%3F");
    const auto sugar = get(path);
    EXPECT_EQ(sugar.status, 200);
    EXPECT_TRUE(sugar.header.contains("Content-Type: image/gif\r\n")) << sugar.header.toStdString();
}

TEST_F(GoodsRoutesTest, Name_no_picture_where_there_is_none)
{
    add(folder.path());
    EXPECT_TRUE(goods().at(2)["picture"].isNull());
    EXPECT_TRUE(goods().at(3)["picture"].isNull());
}

TEST_F(GoodsRoutesTest, Name_no_pictures_without_a_folder)
{
    add({});
    EXPECT_TRUE(goods().at(0)["picture"].isNull());
}

TEST_F(GoodsRoutesTest, Answer_404_for_a_picture_that_has_gone)
{
    add(folder.path());
    ASSERT_TRUE(QFile::remove(folder.filePath("tea.svg")));
    EXPECT_EQ(get("/pictures/100").status, 404);
}

TEST_F(GoodsRoutesTest, Do_not_wait_for_a_pipe_in_the_place_of_a_picture)
{
    add(folder.path());
    const auto file = folder.filePath("tea.svg");
    ASSERT_TRUE(QFile::remove(file));
    ASSERT_EQ(mkfifo(QFile::encodeName(file).constData(), 0600), 0);
    EXPECT_EQ(get("/pictures/100").status, 404);
}
