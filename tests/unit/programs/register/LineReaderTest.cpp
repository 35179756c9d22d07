#include "RunEvents.h"

#include <register/LineReader.h>

#include <common/UsageError.h>

#include <support/PrintQt.h>
#include <support/Wait.h>

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

constexpr qsizetype longest = 1024 * 1024;

/// Takes lines until the reader is at its end.
QByteArrayList readAll(LineReader &reader)
{
    QByteArrayList lines;
    runEventsUntil([&] {
        while (const auto line = reader.takeLine())
            lines.append(*line);
        return reader.isAtEnd();
    });
    EXPECT_TRUE(reader.isAtEnd());
    return lines;
}

class LineReaderOfFile : public testing::Test
{
protected:
    QByteArrayList linesOf(const QByteArray &content) const
    {
        QFile file(fileName);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        file.close();
        LineReader reader(fileName);
        return readAll(reader);
    }

    QTemporaryDir folder;
    const QString fileName = folder.filePath("команды.jsonl");
};

/// A reader of standard input that is a pipe with the test at its other end.
class LineReaderOfPipe : public testing::Test
{
protected:
    LineReaderOfPipe()
    {
        EXPECT_EQ(pipe2(m_ends.data(), O_CLOEXEC), 0);
        m_input = dup(STDIN_FILENO);
        dup2(m_ends[0], STDIN_FILENO);
    }

    ~LineReaderOfPipe() override
    {
        dup2(m_input, STDIN_FILENO);
        close(m_input);
        close(m_ends[0]);
        closeInput();
    }

    void write(const QByteArray &bytes)
    {
        ASSERT_EQ(::write(m_ends[1], bytes.constData(), static_cast<std::size_t>(bytes.size())),
                  bytes.size());
    }

    void closeInput()
    {
        if (m_ends[1] >= 0)
            close(m_ends[1]);
        m_ends[1] = -1;
    }

    int unreadBytes() const
    {
        int count = 0;
        ioctl(m_ends[0], FIONREAD, &count);
        return count;
    }

    static std::optional<QByteArray> nextLine(LineReader &reader)
    {
        std::optional<QByteArray> line;
        support::waitFor([&] { return (line = reader.takeLine()).has_value(); });
        return line;
    }

private:
    std::array<int, 2> m_ends{};
    int m_input = -1;
};

} // namespace

TEST_F(LineReaderOfFile, Gives_the_lines_without_their_ends)
{
    EXPECT_EQ(linesOf("first\nвторая\n"), (QByteArrayList{"first", "вторая"}));
}

TEST_F(LineReaderOfFile, Gives_a_last_line_without_an_end_too)
{
    EXPECT_EQ(linesOf("first\nlast"), (QByteArrayList{"first", "last"}));
}

TEST_F(LineReaderOfFile, Gives_blank_lines_as_they_are)
{
    EXPECT_EQ(linesOf("\n\na\n \n"), (QByteArrayList{"", "", "a", " "}));
}

TEST_F(LineReaderOfFile, Is_at_its_end_at_once_when_it_is_empty)
{
    EXPECT_TRUE(linesOf("").isEmpty());
}

TEST_F(LineReaderOfFile, Gives_many_lines_of_every_length)
{
    QByteArrayList lines;
    for (int i = 0; i < 300; ++i)
        lines.append(QByteArray(i * 31 % 9000, 'x') + QByteArray::number(i));
    EXPECT_TRUE(linesOf(lines.join('\n') + '\n') == lines);
}

TEST_F(LineReaderOfFile, Cuts_a_line_that_is_too_long_and_goes_on)
{
    const auto lines = linesOf(QByteArray(longest + 10, 'x') + "\nnext\n");
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[0].size(), longest);
    EXPECT_EQ(lines[1], QByteArray(10, 'x'));
    EXPECT_EQ(lines[2], "next");
}

TEST_F(LineReaderOfFile, Does_not_cut_a_line_that_is_just_not_too_long)
{
    const auto lines = linesOf(QByteArray(longest - 1, 'x') + "\nnext\n");
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines[0].size(), longest - 1);
}

TEST_F(LineReaderOfFile, Names_the_file_that_cannot_be_opened)
{
    try {
        const LineReader reader(fileName);
        ADD_FAILURE() << "no error";
    } catch (const UsageError &error) {
        EXPECT_EQ(QString::fromUtf8(error.what()),
                  "--commands " + fileName + " cannot be read: No such file or directory.");
    }
}

TEST_F(LineReaderOfFile, Does_not_take_a_folder_for_an_empty_file)
{
    try {
        const LineReader reader(folder.path());
        ADD_FAILURE() << "no error";
    } catch (const UsageError &error) {
        EXPECT_EQ(QString::fromUtf8(error.what()),
                  "--commands " + folder.path() + " cannot be read: Is a directory.");
    }
}

TEST_F(LineReaderOfPipe, Gives_each_line_when_it_is_complete)
{
    LineReader reader("-");
    write("fir");
    EXPECT_TRUE(support::waitFor([&] { return unreadBytes() == 0; }));
    EXPECT_EQ(reader.takeLine(), std::nullopt);
    write("st\nsecond\nthi");
    EXPECT_EQ(nextLine(reader), "first");
    EXPECT_EQ(nextLine(reader), "second");
    EXPECT_EQ(reader.takeLine(), std::nullopt);
    EXPECT_FALSE(reader.isAtEnd());
    closeInput();
    EXPECT_EQ(nextLine(reader), "thi");
    EXPECT_TRUE(reader.isAtEnd());
}

TEST_F(LineReaderOfPipe, Tells_of_each_change)
{
    LineReader reader("-");
    int changes = 0;
    QObject::connect(&reader, &LineReader::changed, [&] { ++changes; });
    write("a\n");
    EXPECT_TRUE(support::waitFor([&] { return changes == 1; }));
    EXPECT_EQ(reader.takeLine(), "a");
    EXPECT_EQ(reader.takeLine(), std::nullopt);
    closeInput();
    EXPECT_TRUE(support::waitFor([&] { return changes == 2; }));
    EXPECT_TRUE(reader.isAtEnd());
}

TEST_F(LineReaderOfPipe, Reads_nothing_before_it_is_needed)
{
    LineReader reader("-");
    write("first\n");
    EXPECT_TRUE(support::waitFor([&] { return unreadBytes() == 0; }));
    write("second\n");
    support::letPass(50ms);
    EXPECT_EQ(unreadBytes(), 7) << "the first line has not been taken yet";
    EXPECT_EQ(reader.takeLine(), "first");
    support::letPass(50ms);
    EXPECT_EQ(unreadBytes(), 7) << "nobody has asked for the second line";
    EXPECT_EQ(reader.takeLine(), std::nullopt);
    EXPECT_EQ(nextLine(reader), "second");
}

TEST_F(LineReaderOfPipe, Reads_no_further_in_a_line_that_is_too_long_until_it_is_taken)
{
    LineReader reader("-");
    const QByteArray chunk(4096, 'x');
    for (qsizetype written = 0; written < longest; written += chunk.size()) {
        write(chunk);
        ASSERT_TRUE(support::waitFor([&] { return unreadBytes() == 0; }));
    }
    write(chunk);
    support::letPass(50ms);
    EXPECT_EQ(unreadBytes(), chunk.size());
    EXPECT_EQ(reader.takeLine().value_or("").size(), longest);
}
