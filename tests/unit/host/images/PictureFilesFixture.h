#pragma once

#include "PictureSamples.h"

#include <PictureFiles.h>

#include <support/LogCapture.h>
#include <support/PrintQt.h>
#include <support/Wait.h>

#include <QTemporaryDir>

#include <utility>

/// Pictures in files of a folder of their own, and what is announced of them.
class PictureFilesFixture : public testing::Test
{
protected:
    explicit PictureFilesFixture(qsizetype cacheBytes = maxCachedPictureBytes) : files(cacheBytes)
    {
        QObject::connect(&files, &PictureFiles::loaded, &files, [this](const Image &image) {
            EXPECT_EQ(files.find(image).toUri({}), image.toUri({})); // known by then
            announced.append(image.value() + ": " + image.toUri({}));
        });
    }

    /// How a picture with this content is announced.
    static QString announcement(const ImageId &id, const QByteArray &content)
    {
        return id.value() + ": " + Image(id, content).toUri({});
    }

    /// Runs events until something is announced, and returns it.
    QStringList nextAnnounced()
    {
        EXPECT_TRUE(support::waitFor([&] { return !announced.isEmpty(); }));
        return std::exchange(announced, {});
    }

    /// Runs events until something is announced and nothing more follows, and returns all of it.
    QStringList allAnnounced()
    {
        EXPECT_TRUE(support::waitFor([&] { return !announced.isEmpty(); }));
        support::letPass(quiet);
        return std::exchange(announced, {});
    }

    void expectNothingAnnounced()
    {
        support::letPass(quiet);
        EXPECT_EQ(announced, QStringList());
    }

    /// Adds the file as that picture and waits until it is at hand.
    void addLoaded(const ImageId &id, const QByteArray &content)
    {
        write(file, content);
        files.add(id, file);
        EXPECT_FALSE(files.find(id).isLoaded());
        EXPECT_EQ(nextAnnounced(), QStringList(announcement(id, content)));
    }

    QString uriOf(const ImageId &id) { return files.find(id).toUri({}); }

    /// What was logged of pictures that could not be loaded.
    QStringList logged() const { return log.textsOf("images"); }
    QString logLine(const QString &problem) const
    {
        return "Картинка не загружена: " + file + ": " + problem;
    }

    /// Longer than a change takes to be seen, to settle and to be loaded.
    static constexpr std::chrono::milliseconds quiet{350};

    const ImageId milk{ImageId::GoodsCode, "100"};
    const ImageId milkBarcode{ImageId::Barcode, "4600000001005"};
    const QByteArray one = svg("1");
    const QByteArray two = svg("2");

    const support::LogCapture log;
    const QTemporaryDir folder;
    const QString file = folder.filePath("a.png");
    PictureFiles files;
    QStringList announced;
};
