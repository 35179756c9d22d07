#pragma once

#include <display/MultipartReader.h>

#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QTimer>

#include <chrono>
#include <memory>
#include <optional>

/// What of an advertisement is there to be shown. A value type.
struct AdContent
{
    enum class Kind { None, Loading, Picture, Film, Stream };

    Kind kind = Kind::None;
    QByteArray bytes; ///< the picture or film; of a stream, its last picture
    QString mimeType;
    int frame = 0; ///< counts the pictures of a stream
};

/**
 * Plays one advertisement at a time: loads it, shows it for its time, and tells how it went.
 *
 * A picture or film is fetched from its address ("http", "https", "file" or "data") and shown for
 * "time" seconds. A stream ("ads") is fetched as pictures from the service that its address names
 * and is shown until it ends or stalls, which counts as its failure.
 *
 * Life of one: `play`, then either `finished(true)` after its time, or `finished(false)` when it
 * could not be loaded or broke off; nothing if another `play` comes first.
 *
 * Owner: the display. Thread: the main thread. Errors: `reason` tells why the last one failed.
 * Shut-down: the destructor drops what is being loaded.
 */
class AdPlayer : public QObject
{
    Q_OBJECT

public:
    /// `patience` is how long an address may stay silent, and a stream without a picture;
    /// `loadTime` is how long what is no stream may take to be loaded.
    explicit AdPlayer(std::chrono::milliseconds patience = std::chrono::seconds(10),
                      std::chrono::milliseconds loadTime = std::chrono::minutes(2));
    ~AdPlayer() override;

    void play(const QJsonObject &ad);
    /// Who shows it could not: the advertisement has failed, unless it has had its time.
    void fail(const QString &reason);
    /// Ends what is being played; nothing is told of it.
    void stop();

    /// What is there to be shown. What has had its time stays until the next one is there.
    const AdContent &content() const { return m_content; }

    /// Why the last advertisement failed, for people.
    QString reason() const { return m_reason; }
    /// How many pictures of streams were received.
    int streamPictures() const { return m_streamPictures; }

Q_SIGNALS:
    void contentChanged();
    /// The advertisement has been shown, or could not be. Emitted on the main thread.
    void finished(bool shown);

private:
    struct DeleteLater
    {
        void operator()(QNetworkReply *reply) const;
    };

    void fetch(const QUrl &address);
    void checkSize();
    void showContent();
    void readStream();
    void setContent(const AdContent &content);
    void finish(bool shown, const QString &reason = {});

    const std::chrono::milliseconds m_patience;
    const std::chrono::milliseconds m_loadTime;
    QNetworkAccessManager m_network;
    std::unique_ptr<QNetworkReply, DeleteLater> m_reply; // null unless something is being loaded
    std::optional<MultipartReader> m_stream;             // of the stream that is being played
    QTimer m_shown;                                      // ends the time of a picture
    QTimer m_stalled;                                    // ends the patience with a stream
    QTimer m_loading;                                    // ends the time to load anything else
    std::chrono::seconds m_time{0};
    AdContent m_content;
    QString m_reason;
    int m_streamPictures = 0;
};
