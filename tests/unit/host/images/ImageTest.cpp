#include <Image.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

namespace {

const ImageId milk(ImageId::GoodsCode, QStringLiteral("100"));

const QByteArray png = QByteArray::fromBase64(
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR42mNkYPhfDwAChwGA60e6kgAAAABJRU5Er"
    "kJggg==");
const QByteArray jpeg = QByteArray::fromHex("ffd8ffe000104a46494600010100000100010000ffd9");
const QByteArray svg = "<svg xmlns=\"http://www.w3.org/2000/svg\"><text>Молоко</text></svg>";
const QByteArray svgWithProlog = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + svg;

} // namespace

TEST(Image, Is_a_data_URI_of_its_content)
{
    const struct
    {
        const char *mimeType;
        QByteArray content;
    } rows[] = {
        {"image/png", png},
        {"image/jpeg", jpeg},
        {"image/svg+xml", svg},
        {"image/svg+xml", svgWithProlog},
    };
    for (const auto &[mimeType, content] : rows) {
        SCOPED_TRACE(content.left(20).toStdString());
        const auto uri = Image(milk, content).toUri(QString());
        const auto prefix = QStringLiteral("data:%1;base64,").arg(QLatin1String(mimeType));
        ASSERT_TRUE(uri.startsWith(prefix)) << uri.left(40).toStdString();

        const auto decoded = QByteArray::fromBase64Encoding(
            uri.mid(prefix.size()).toLatin1(), QByteArray::AbortOnBase64DecodingErrors);
        ASSERT_TRUE(decoded);
        EXPECT_EQ(*decoded, content);
    }
}

TEST(Image, Has_an_empty_URI_while_it_is_not_loaded)
{
    EXPECT_FALSE(Image(milk).isLoaded());
    EXPECT_EQ(Image(milk).toUri(QString()), QString());
    EXPECT_EQ(Image(milk).value(), milk.value());
}

TEST(Image, Is_unknown_by_default)
{
    EXPECT_FALSE(Image().isLoaded());
    EXPECT_EQ(Image().value(), QString());
    EXPECT_EQ(Image().toUri(QString()), QString());
}

TEST(Image, Ignores_the_base_address)
{
    const Image image(milk, png);
    EXPECT_TRUE(image.isLoaded());
    EXPECT_EQ(image.toUri(QStringLiteral("http://127.0.0.1/pictures/")), image.toUri(QString()));
}

TEST(Image, Shares_its_address_with_its_copies_and_those_under_another_identifier)
{
    const Image image(milk, png);
    const Image other(ImageId(ImageId::Barcode, QStringLiteral("46")), image);
    EXPECT_EQ(other.value(), QStringLiteral("46"));
    EXPECT_EQ(other.toUri({}).constData(), image.toUri({}).constData());
}
