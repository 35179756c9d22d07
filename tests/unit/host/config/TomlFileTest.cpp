#include "TomlText.h"

#include <ConfigError.h>
#include <TomlFile.h>

#include <support/PrintQt.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace {

using testing::StartsWith;

std::string errorOf(const QString &fileName)
{
    try {
        readTomlFile(fileName);
    } catch (const ConfigError &error) {
        return error.what();
    }
    return "no error";
}

} // namespace

TEST(TomlFile, Keeps_tables_lists_and_types)
{
    const auto content = readTomlFile(TomlText().file(R"(
whole = 5
[table]
list = ["a", 1, [true]]
inner = { x = 0.5 }
)"));
    const QVariantMap expected{
        {QStringLiteral("whole"), 5LL},
        {QStringLiteral("table"),
         QVariantMap{
             {QStringLiteral("list"), QVariantList{QStringLiteral("a"), 1LL, QVariantList{true}}},
             {QStringLiteral("inner"), QVariantMap{{QStringLiteral("x"), 0.5}}},
         }},
    };
    EXPECT_EQ(content, expected);
}

TEST(TomlFile, Keeps_texts_and_keys_that_are_not_ASCII)
{
    const auto content = readTomlFile(TomlText().file("\"ключ\" = \"«зн» 🧾\"\n"));
    EXPECT_EQ(content.value(QStringLiteral("ключ")), QVariant(QStringLiteral("«зн» 🧾")));
}

TEST(TomlFile, Is_empty_when_the_file_is)
{
    EXPECT_EQ(readTomlFile(TomlText().file("")), QVariantMap());
}

TEST(TomlFile, Names_a_missing_file)
{
    const auto name = QStringLiteral("/no/such/магазин.toml");
    EXPECT_THAT(errorOf(name), StartsWith(name.toStdString() + ": cannot be read: "));
}

TEST(TomlFile, Refuses_a_folder)
{
    const auto name = QDir::tempPath();
    EXPECT_THAT(errorOf(name), StartsWith(name.toStdString() + ": cannot be read: "));
}

TEST(TomlFile, Says_where_a_broken_file_is_broken)
{
    const struct
    {
        const char *content;
        const char *place;
    } rows[] = {
        {"[View.Style]\ndisplayType = \n", ":2:"},
        {"a = 1\nb = 2\na = 3\n", ":3:"},
        {"[open\n", ":1:"},
        {"\n\n\nkey = \"never closed\n", ":4:"},
        {"bad = \"\xff\xfe\"\n", ":1:"},
        {"just text", ":1:"},
        {"key = \"breaks off", ":1:"},
        {"a = 1}\n}]\n", ":1:"},
        {"a = [}]\n", ":1:"},
    };
    const TomlText text;
    for (const auto &[content, place] : rows) {
        SCOPED_TRACE(content);
        const auto name = text.file(content);
        EXPECT_THAT(errorOf(name), testing::MatchesRegex(".*shop\\.toml:[0-9]+:[0-9]+: .+"));
        EXPECT_THAT(errorOf(name), StartsWith(name.toStdString() + place));
    }
}

TEST(TomlFile, Bears_however_many_brackets)
{
    const TomlText text;
    const auto name = text.file("a = " + QByteArray(100'000, '[') + "\nb.c = 1\n");
    EXPECT_THAT(errorOf(name), StartsWith(name.toStdString() + ":1:"));
}

TEST(TomlFile, Says_the_column_too)
{
    const TomlText text;
    const auto name = text.file("key = 1 2\n");
    EXPECT_THAT(errorOf(name), StartsWith(name.toStdString() + ":1:9: "));
}

TEST(TomlFile, With_a_key_of_more_than_64_parts_is_refused_with_its_line)
{
    const auto key = [](int parts) { return QByteArray("a.").repeated(parts - 1) + "a"; };
    const QByteArray dots(100, '.');
    const QByteArray before = "# don't count " + dots + "\nx = \"" + dots + "\\\"" + dots +
                              "\"\ny = \"\"\"\n'" + dots + "\n\"\"\"\"\"\nz = '" + dots + "\\" +
                              dots + "'\n";
    const struct
    {
        const char *begin;
        int parts;
        const char *end;
    } rows[] = {
        {"", 0, " = 1.5\n"},
        {"[", 0, "]\n"},
        {"[[", 0, "]]\n"},
        {"b = { c = 1.5, ", 1, " = 1 }\n"},
        {"b.c = { d.e = { f = 1 }, ", 2, " = 1 }\n"},
        {"b.c = { d.e = [ 1.5, { ", 4, " = 1 } ] }\n"},
        {"\"'#\\\"=\" . b.", 2, " = 1\n"},
    };
    const TomlText text;
    for (const auto &[begin, parts, end] : rows) {
        SCOPED_TRACE(begin);
        const auto allowed = text.file(before + begin + key(64 - parts) + end);
        EXPECT_EQ(errorOf(allowed), "no error");
        const auto refused = text.file(before + begin + key(65 - parts) + end);
        EXPECT_EQ(errorOf(refused),
                  refused.toStdString() + ":7: a key has more than 64 parts; shorten it");
    }
    EXPECT_EQ(errorOf(text.file(key(64) + " = 1\n")), "no error");
    const auto first = text.file(key(65) + " = 1\n");
    EXPECT_EQ(errorOf(first), first.toStdString() + ":1: a key has more than 64 parts; shorten it");
}

TEST(TomlFile, With_braces_and_brackets_that_do_not_match_is_refused)
{
    const TomlText text;
    for (const char *mark : {"{", "}", "[", "]", "=", "\"", "'''", ".", ","}) {
        SCOPED_TRACE(mark);
        EXPECT_NE(errorOf(text.file(QByteArray(mark).repeated(100'000))), "no error");
    }
}

TEST(TomlFile, Is_named_as_it_is_in_its_errors)
{
    const TomlText text;
    const auto name = text.file("a = \n", "a%2b%1.toml");
    EXPECT_THAT(errorOf(name), StartsWith(name.toStdString() + ":1:"));
}

TEST(TomlFile, That_is_no_file_is_named_and_not_waited_for)
{
    const QTemporaryDir folder;
    const auto pipe = folder.filePath("pipe");
    ASSERT_EQ(mkfifo(qPrintable(pipe), 0600), 0);
    for (const auto &name : {pipe, folder.path(), QString("/dev/zero")})
        EXPECT_EQ(errorOf(name), name.toStdString() + ": cannot be read: it is no file");
}

TEST(TomlFile, That_is_too_large_is_named_and_not_read)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath("large.toml"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_TRUE(file.resize(16'777'217));
    EXPECT_EQ(errorOf(file.fileName()),
              file.fileName().toStdString() + ": cannot be read: it is larger than 16777216 bytes");
    ASSERT_TRUE(file.resize(16'777'216));
    EXPECT_THAT(errorOf(file.fileName()),
                StartsWith(file.fileName().toStdString() + ":1:")); // read
}
