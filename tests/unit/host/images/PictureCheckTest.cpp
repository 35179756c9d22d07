#include "PictureSamples.h"

#include <PictureBytes.h>
#include <PictureCheck.h>

#include <support/LogCapture.h>
#include <support/PrintQt.h>

#include <QStringEncoder>

namespace {

const QByteArray gif =
    QByteArray::fromHex("47494638396101000100800000ffffff0000002c00000000010001000002024401003b");
/// The start of a format that Qt has no decoder for without a further plug-in.
const QByteArray webp = QByteArrayLiteral("RIFF\x24\0\0\0WEBPVP8 ") + QByteArray(40, 'a');

struct Row
{
    const char *name;
    QByteArray content;
    QString problem;
};

void PrintTo(const Row &row, std::ostream *out)
{
    *out << row.name;
}

class Content : public testing::TestWithParam<Row>
{
protected:
    const support::LogCapture log; // the decoders' own lines
};

QByteArray cut(QByteArray content, qsizetype bytes)
{
    content.chop(bytes);
    return content;
}

const auto damagedPng = [] {
    auto content = encoded("PNG");
    content[content.indexOf("IDAT") + 8] = '\x55';
    return content;
}();

QByteArray svgOfReferences(int count)
{
    return "<?xml version=\"1.0\"?><!DOCTYPE svg [<!ENTITY a \"" + QByteArray(4000, 'a') + "\">]>" +
           svg(QByteArray("&a;").repeated(count));
}

/// Of which one is that of the root's namespace.
QByteArray svgOfAttributes(int count)
{
    QByteArray element = "<text";
    for (int i = 0; i <= count; ++i)
        element += " a" + QByteArray::number(i) + "='>'";
    return "<svg xmlns=\"http://www.w3.org/2000/svg\">" + element + "/></svg>";
}

QByteArray utf16(const QByteArray &text)
{
    return QStringEncoder(QStringEncoder::Utf16, QStringEncoder::Flag::WriteBom)(QString(text));
}

/// In declarations of a hundred bytes.
QByteArray svgOfDeclarations(int count)
{
    const auto declaration =
        ("<!ATTLIST svg" + QByteArray(" a CDATA 'u'").repeated(7)).leftJustified(99) + '>';
    return "<?xml version=\"1.0\"?><!DOCTYPE svg [" + declaration.repeated(count) + "]>" + svg("x");
}

const Row shown[] = {
    {"PNG", encoded("PNG"), {}},
    {"JPEG", encoded("JPG"), {}},
    {"BMP", encoded("BMP"), {}},
    {"GIF", gif, {}},
    {"SVG", svg("Чай"), {}},
    {"SVG with a prolog", "<?xml version=\"1.0\"?>\n" + svg("x"), {}},
    {"SVG with an element of the most attributes", svgOfAttributes(999), {}},
    {"SVG that refers to its entities", svgOfReferences(1000), {}},
    {"SVG that declares attributes", svgOfDeclarations(40), {}},
    {"a format that only the display knows", webp, {}},
    {"JPEG with something behind it", encoded("JPG") + "more", {}},
};

const Row refused[] = {
    {"text", "hello", "это не картинка, а text/plain"},
    {"HTML", "<html><body>" + svg("x") + "</body></html>", "это не картинка, а text/html"},
    {"PDF", "%PDF-1.4\n", "это не картинка, а application/pdf"},
    {"PNG without its second half", cut(encoded("PNG"), 60), "файл обрывается"},
    {"PNG without its last chunk", cut(encoded("PNG"), 12), "файл обрывается"},
    {"PNG of which there is but the start", encoded("PNG").left(10), "файл обрывается"},
    {"JPEG without its end", cut(encoded("JPG"), 2), "файл обрывается"},
    {"JPEG of which there is but the start", encoded("JPG").left(40), "файл обрывается"},
    {"JPEG without a picture", QByteArray::fromHex("ffd8ffe000104a46494600010100000100010000ffd9"),
     "файл повреждён"},
    {"PNG with a wrong byte", damagedPng, "файл повреждён"},
    {"XPM without its pixels", brokenXpm(), "файл повреждён"},
    {"SVG without its end", cut(svg("x"), 8), "ошибка XML в строке 1: "},
    {"SVG with crossed tags", "<svg xmlns=\"http://www.w3.org/2000/svg\">\n<a><b></a></b></svg>",
     "ошибка XML в строке 2: "},
    {"SVG that grows without end",
     "<?xml version=\"1.0\"?><!DOCTYPE svg [<!ENTITY a \"" + QByteArray(1000, 'a') +
         "\"><!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;\"><!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;\">]>" +
         svg("&c;"),
     "ошибка XML в строке 1: "},
    {"SVG with an element of many attributes", svgOfAttributes(1000),
     "больше 1000 атрибутов у элемента"},
    {"SVG that refers to its entities too often", svgOfReferences(1001),
     "больше 1000 ссылок на сущности"},
    {"SVG that declares many attributes at once",
     "<?xml version=\"1.0\"?><!DOCTYPE svg [<!ATTLIST svg" +
         QByteArray(" a CDATA 'u'").repeated(400) + ">]>" + svg("x"),
     "объявления атрибутов больше 4096 байт"},
    {"SVG that ends within a long declaration of attributes",
     svg("x") + "<!ATTLIST svg" + QByteArray(" a CDATA 'u'").repeated(400),
     "объявления атрибутов больше 4096 байт"},
    {"SVG that declares many attributes one after the other", svgOfDeclarations(41),
     "объявления атрибутов больше 4096 байт"},
    {"SVG of an encoding whose text is not looked through", utf16(svg("x")),
     "это не картинка, а text/plain"},
};

} // namespace

using ShownContent = Content;
using RefusedContent = Content;

TEST_P(ShownContent, Has_no_problem)
{
    EXPECT_EQ(pictureProblem(GetParam().content), "");
}

TEST_P(RefusedContent, Is_told_with_its_reason)
{
    const auto problem = pictureProblem(GetParam().content);
    EXPECT_TRUE(problem.startsWith(GetParam().problem)) << problem.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Row, ShownContent, testing::ValuesIn(shown));
INSTANTIATE_TEST_SUITE_P(Row, RefusedContent, testing::ValuesIn(refused));

TEST(PictureCheck, Refuses_a_small_file_with_too_many_pixels)
{
    const auto bomb = encoded("PNG", Qt::color0, QSize(10'000, 3'201), QImage::Format_Mono);
    EXPECT_LT(bomb.size(), 100'000);
    EXPECT_EQ(pictureProblem(bomb), "больше 32000000 пикселей");
}

TEST(PictureCheck, Refuses_a_size_that_exceeds_any_memory_without_unpacking_it)
{
    EXPECT_EQ(pictureProblem("P6\n32000 32000\n255\nabc"), "больше 32000000 пикселей");
}

TEST(PictureCheck, Takes_the_largest_picture)
{
    const auto largest = encoded("PNG", Qt::color0, QSize(10'000, 3'200), QImage::Format_Mono);
    EXPECT_EQ(pictureProblem(largest), "");
}

TEST(PictureCheck, Breaks_off_what_takes_too_long_to_unpack)
{
    EXPECT_EQ(pictureProblem(jpegOfManyScans()), "распаковка длится дольше 5 с");
}

TEST(PictureCheck, Breaks_off_at_a_stop)
{
    std::stop_source stop;
    stop.request_stop();
    for (const auto &content : {jpegOfManyScans(), encoded("PNG"), svg("x")})
        EXPECT_EQ(pictureProblem(content, stop.get_token()), "распаковка длится дольше 5 с");
}

TEST(PictureBytes, Are_read_whole_in_time)
{
    const auto content = encoded("PNG");
    PictureBytes bytes(content, {}, std::chrono::minutes(1));
    EXPECT_EQ(bytes.size(), content.size());
    EXPECT_EQ(bytes.readAll(), content);
    EXPECT_TRUE(bytes.seek(10));
    EXPECT_EQ(bytes.read(3), content.mid(10, 3));
    EXPECT_FALSE(bytes.seek(-1));
    EXPECT_FALSE(bytes.seek(content.size() + 1));
    EXPECT_EQ(bytes.read(3), content.mid(13, 3));
    EXPECT_TRUE(bytes.seek(content.size()));
    EXPECT_EQ(bytes.read(1), QByteArray());
    EXPECT_FALSE(bytes.isBrokenOff());
}

TEST(PictureBytes, Break_off_when_their_time_is_over)
{
    const auto content = encoded("PNG");
    PictureBytes bytes(content, {}, std::chrono::nanoseconds(0));
    EXPECT_EQ(bytes.readAll(), QByteArray());
    EXPECT_TRUE(bytes.isBrokenOff());
    EXPECT_TRUE(bytes.atEnd());
}
