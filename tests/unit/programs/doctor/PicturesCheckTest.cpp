#include "Complete.h"

#include <doctor/PictureWords.h>
#include <doctor/PicturesCheck.h>

#include <PictureFile.h>

#include <QBuffer>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QTemporaryDir>

using namespace doctor;
using namespace std::chrono_literals;

namespace {

QByteArray png()
{
    QImage image(2, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data();
}

class PicturesCheck : public testing::Test
{
protected:
    Findings check(const QStringList &catalogue, std::chrono::milliseconds patience = 10s) const
    {
        return complete(checkPictures(folder.path(), catalogue, patience));
    }

    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QTemporaryDir folder;
};

} // namespace

TEST_F(PicturesCheck, Counts_the_pictures)
{
    write("a.png", png());
    write("b.svg", "<svg xmlns=\"http://www.w3.org/2000/svg\"/>");
    const auto findings = check({"a.png", "b.svg", "./a.png"});
    EXPECT_EQ(statuses(findings), QStringList{"ok"});
    EXPECT_EQ(findings.front().details["files"].toInt(), 2);
    EXPECT_EQ(findings.front().details["checked"].toInt(), 2);
    EXPECT_EQ(findings.front().details["unusable"].toInt(), 0);
}

TEST_F(PicturesCheck, Warns_of_each_file_that_cannot_be_shown_and_tells_why)
{
    write("cut.png", png().left(50));
    write("empty.png", "");
    write("large.png", QByteArray(maxPictureFileBytes + 1, 'x'));
    write("text.txt", "no picture\n");
    write("xml.svg", "<svg xmlns=\"http://www.w3.org/2000/svg\"><a></svg>");
    const auto findings = check({});
    EXPECT_EQ(statuses(findings),
              (QStringList{"ok", "warning", "warning", "warning", "warning", "warning"}));
    EXPECT_EQ(findings.front().details["unusable"].toInt(), 5);
    EXPECT_EQ(english(findings[2]), "Picture empty.png: the file is empty.");
    EXPECT_TRUE(findings[4].details["file"].toString().endsWith("/text.txt"));
}

TEST_F(PicturesCheck, Compares_the_folder_with_the_catalogue)
{
    write("A.png", png());
    const auto findings = check({"a.png"});
    EXPECT_EQ(statuses(findings), (QStringList{"ok", "warning", "warning"}));
    EXPECT_EQ(findings[1].details["missing"].toArray(), QJsonArray{"a.png"});
    EXPECT_EQ(findings[2].details["unnamed"].toArray(), QJsonArray{"A.png"});
    EXPECT_EQ(statuses(check({})), QStringList{"ok"}) << "without a catalogue";
}

TEST_F(PicturesCheck, Ends_in_time)
{
    write("a.png", png());
    EXPECT_EQ(check({"a.png"}, 0ms).front().details["checked"].toInt(), 0);
}

TEST_F(PicturesCheck, Fails_a_folder_that_is_none_and_leaves_out_what_is_not_given)
{
    EXPECT_EQ(statuses(complete(checkPictures("/none", {}, 1s))), QStringList{"failed"});
    EXPECT_EQ(statuses(complete(checkPictures({}, {}, 1s))), QStringList{"skipped"});
}

TEST(PictureWords, Are_there_for_whatever_the_host_finds_wrong)
{
    for (const auto *problem :
         {"это не картинка, а text/plain", "это не файл", "не читается: No such file", "файл пуст",
          "файл больше 8388608 байт", "больше 32000000 пикселей", "файл обрывается",
          "файл повреждён", "ошибка XML в строке 3: Opening and ending tag mismatch."}) {
        const auto words = pictureWords(QString::fromUtf8(problem));
        expectComplete(words);
        EXPECT_EQ(words.in(Language::Russian), QString::fromUtf8(problem));
    }
    EXPECT_EQ(pictureWords("файл больше 8 байт").in(Language::English),
              "the file is larger than 8 bytes");
    EXPECT_EQ(pictureWords("something new").in(Language::English), "something new");
}
