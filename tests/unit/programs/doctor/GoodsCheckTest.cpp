#include "Complete.h"

#include <doctor/GoodsCheck.h>

#include <QFile>
#include <QTemporaryDir>

using namespace doctor;

namespace {

class GoodsCheck : public testing::Test
{
protected:
    GoodsResult check(const QString &setting) const
    {
        auto result = checkGoods(setting, folder.filePath("shop.toml"));
        complete(result.findings);
        return result;
    }

    void write(const QByteArray &content) const
    {
        QFile file(folder.filePath("goods.toml"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    QTemporaryDir folder;
};

} // namespace

TEST_F(GoodsCheck, Reads_the_catalogue_beside_the_settings)
{
    write("[[goods]]\ncode = \"1\"\nname = \"a\"\nprice = 1\npicture = \"a.svg\"\n"
          "[[goods]]\ncode = \"2\"\nname = \"b\"\nprice = 1\n");
    const auto result = check("goods.toml");
    EXPECT_EQ(statuses(result.findings), QStringList{"ok"});
    EXPECT_EQ(result.findings.front().details["articles"].toInt(), 2);
    EXPECT_EQ(result.pictures, QStringList{"a.svg"});
}

TEST_F(GoodsCheck, Fails_what_the_register_would_refuse)
{
    write("[[goods]]\ncode = \n");
    const auto broken = check("goods.toml");
    EXPECT_EQ(statuses(broken.findings), QStringList{"failed"});
    EXPECT_TRUE(english(broken.findings.front()).contains("goods.toml:2:"));
    EXPECT_EQ(statuses(check("none.toml").findings), QStringList{"failed"});
}

TEST_F(GoodsCheck, Is_left_out_without_a_catalogue)
{
    EXPECT_EQ(statuses(check({}).findings), QStringList{"skipped"});
}
