#include "PictureSamples.h"

#include <PictureLoader.h>

#include <support/DescriptorLimit.h>
#include <support/PrintQt.h>
#include <support/Wait.h>

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QThread>

#include <atomic>
#include <memory>

namespace {

/// Where and how often a decoder was at work, as its complaints about broken pictures tell.
class DecoderWatch
{
public:
    DecoderWatch() : m_previous(qInstallMessageHandler(&note)) { runs = 0; }
    ~DecoderWatch() { qInstallMessageHandler(m_previous); }
    DecoderWatch(const DecoderWatch &) = delete;
    DecoderWatch &operator=(const DecoderWatch &) = delete;

    static inline std::atomic<int> runs = 0;
    static inline std::atomic<QThread *> thread = nullptr;

private:
    static void note(QtMsgType, const QMessageLogContext &context, const QString &)
    {
        if (QByteArray(context.category) != "qt.gui.imageio")
            return;
        ++runs;
        thread = QThread::currentThread();
    }

    QtMessageHandler m_previous;
};

class PictureLoaderTest : public testing::Test
{
protected:
    PictureLoaderTest()
    {
        QObject::connect(loader.get(), &PictureLoader::loaded, loader.get(),
                         [this](const QString &name, const PictureFile &picture) {
                             EXPECT_EQ(QThread::currentThread(), loader->thread());
                             loaded.append(name);
                             problems.append(picture.problem);
                         });
    }

    QString writeAs(const QString &name, const QByteArray &content) const
    {
        write(folder.filePath(name), content);
        return folder.filePath(name);
    }

    const QTemporaryDir folder;
    std::unique_ptr<PictureLoader> loader = std::make_unique<PictureLoader>();
    QStringList loaded;
    QStringList problems;
};

} // namespace

TEST_F(PictureLoaderTest, Reads_on_a_thread_of_its_own_and_tells_on_its_owners)
{
    const DecoderWatch decoder;
    loader->load(writeAs("a.xpm", brokenXpm()));
    ASSERT_TRUE(support::waitFor([&] { return loaded.size() == 1; }));
    EXPECT_EQ(DecoderWatch::runs, 1);
    EXPECT_NE(DecoderWatch::thread, nullptr);
    EXPECT_NE(DecoderWatch::thread, QThread::currentThread());
}

TEST_F(PictureLoaderTest, Reads_in_the_order_of_asking_and_tells_what_is_wrong)
{
    const QStringList names{writeAs("a.png", encoded("PNG")), folder.filePath("b.png"),
                            writeAs("c.svg", svg("c"))};
    for (const auto &name : names)
        loader->load(name);
    ASSERT_TRUE(support::waitFor([&] { return loaded.size() == 3; }));
    EXPECT_EQ(loaded, names);
    EXPECT_EQ(problems, (QStringList{"", "не читается: No such file or directory", ""}));
}

TEST_F(PictureLoaderTest, Reads_once_for_all_who_ask_before_its_turn)
{
    const auto first = writeAs("a.png", encoded("PNG"));
    const auto second = writeAs("b.png", encoded("PNG"));
    for (const auto &name : {first, second, second, first})
        loader->load(name); // the first is being read when it is asked for again
    ASSERT_TRUE(support::waitFor([&] { return loaded.size() == 3; }));
    support::letPass(std::chrono::milliseconds(20));
    EXPECT_EQ(loaded, (QStringList{first, second, first}));
}

TEST_F(PictureLoaderTest, Knows_what_it_has_still_to_tell)
{
    const auto first = writeAs("a.png", encoded("PNG"));
    const auto second = writeAs("b.png", encoded("PNG"));
    loader->load(first);
    loader->load(second);
    EXPECT_TRUE(loader->isLoading(first));
    EXPECT_TRUE(loader->isLoading(second));
    EXPECT_FALSE(loader->isLoading(folder.filePath("c.png")));
    ASSERT_TRUE(support::waitFor([&] { return loaded.size() == 2; }));
    EXPECT_FALSE(loader->isLoading(first));
    EXPECT_FALSE(loader->isLoading(second));
}

// A thread of Qt's that begins without a descriptor ends the process.
TEST_F(PictureLoaderTest, Does_not_need_a_descriptor_to_begin)
{
    const auto name = writeAs("a.png", encoded("PNG"));
    {
        const support::DescriptorLimit none(static_cast<rlim_t>(support::lowestFreeDescriptor()));
        loader->load(name);
        ASSERT_TRUE(support::waitFor([&] { return loaded.size() == 1; }));
    }
    loader->load(name);
    ASSERT_TRUE(support::waitFor([&] { return loaded.size() == 2; }));
    EXPECT_EQ(problems, (QStringList{"не читается: Too many open files", ""}));
}

TEST_F(PictureLoaderTest, Drops_the_other_pictures_at_its_end)
{
    const DecoderWatch decoder;
    for (const auto *name : {"a.xpm", "b.xpm", "c.xpm"})
        loader->load(writeAs(name, brokenXpm()));
    loader.reset();
    EXPECT_LE(DecoderWatch::runs, 1);
    support::letPass(std::chrono::milliseconds(50));
    EXPECT_LE(DecoderWatch::runs, 1);
    EXPECT_EQ(loaded, QStringList());
}

TEST_F(PictureLoaderTest, Does_not_wait_for_a_picture_that_takes_long_to_unpack_at_its_end)
{
    loader->load(writeAs("a.jpg", jpegOfManyScans()));
    support::letPass(std::chrono::milliseconds(300)); // it is being unpacked now
    ASSERT_TRUE(loaded.isEmpty());
    QElapsedTimer timer;
    timer.start();
    loader.reset();
    EXPECT_LT(timer.elapsed(), 2000);
}
