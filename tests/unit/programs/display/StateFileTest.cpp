#include <display/StateFile.h>

#include <support/LogCapture.h>
#include <support/PrintQt.h>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <csignal>

namespace {

/// As if the disk were full beyond so many bytes of each file.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY_MOVE(FullDisk)

private:
    rlimit m_before{};
    void (*const m_handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

class StateFileTest : public testing::Test
{
protected:
    QString name() const { return folder.filePath("deep/below/state.jsonl"); }

    void add(StateFile &file, const QString &type, const QJsonObject &body)
    {
        const KeptMessage message{++number, type, body, 1};
        messages.keep(message);
        file.add(message, messages);
    }

    QJsonArray readBack() const { return StateFile(name()).read().toJson(); }

    void append(const QByteArray &bytes) const
    {
        QFile file(name());
        ASSERT_TRUE(file.open(QIODevice::Append));
        file.write(bytes);
    }

    QTemporaryDir folder;
    support::LogCapture log;
    LastMessages messages;
    int number = 0;
};

} // namespace

TEST_F(StateFileTest, Gives_the_next_run_the_messages_that_still_matter)
{
    StateFile file(name());
    EXPECT_TRUE(file.read().all().isEmpty());
    add(file, "Configure", {{"a", 1}});
    add(file, "QrPayment", {{"qrCode", "x"}});
    add(file, "UpdateDocument", {{"number", 1}});
    add(file, "QrPayment", {{"close", true}});
    EXPECT_EQ(readBack(), messages.toJson());
    EXPECT_EQ(readBack().size(), 2);
}

TEST_F(StateFileTest, Keeps_nothing_without_a_name)
{
    const QDir here;
    const auto before = here.entryList();
    StateFile file({});
    add(file, "Configure", {});
    EXPECT_TRUE(file.read().all().isEmpty());
    EXPECT_EQ(here.entryList(), before);
    EXPECT_EQ(log.textsOf("display"), QStringList());
}

TEST_F(StateFileTest, Skips_what_is_torn_or_foreign_and_goes_on)
{
    {
        StateFile file(name());
        add(file, "Configure", {});
    }
    append("rubbish\n[1]\n\n{\"n\":2,\"type\":\"Content\",\"bo");
    {
        StateFile file(name());
        EXPECT_EQ(file.read().toJson(), messages.toJson());
        add(file, "Content", {{"data", "after the torn line"}});
    }
    EXPECT_EQ(readBack(), messages.toJson());
}

TEST_F(StateFileTest, Does_not_grow_with_what_no_longer_matters)
{
    StateFile file(name());
    const QString text(100'000, 'x');
    for (int i = 0; i < 100; ++i)
        add(file, "Content", {{"data", text}});
    EXPECT_LT(QFileInfo(name()).size(), 2'000'000);
    EXPECT_EQ(readBack(), messages.toJson());
}

TEST_F(StateFileTest, Forgets_when_told_so)
{
    StateFile file(name());
    add(file, "Configure", {});
    file.rewrite({});
    EXPECT_TRUE(readBack().isEmpty());
}

TEST_F(StateFileTest, Tells_once_that_it_cannot_be_written_and_does_without)
{
    StateFile file(folder.path()); // a folder is no file
    add(file, "Configure", {});
    add(file, "Content", {});
    EXPECT_TRUE(file.read().all().isEmpty());
    ASSERT_EQ(log.textsOf("display").size(), 1);
    EXPECT_TRUE(log.textsOf("display").first().startsWith(
        "the last state is not kept: " + folder.path() + ": "));
}

TEST_F(StateFileTest, Leaves_no_old_state_behind_when_the_disk_is_full)
{
    StateFile file(name());
    add(file, "Content", {{"data", "old"}});
    {
        const FullDisk disk(1000);
        add(file, "Content", {{"data", QString(5000, 'x')}});
    }
    add(file, "Content", {{"data", "later"}});
    EXPECT_EQ(QFileInfo(name()).size(), 0);
    ASSERT_EQ(log.textsOf("display").size(), 1);
}
