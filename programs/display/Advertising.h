#pragma once

#include <display/AdPlayer.h>

#include <QElapsedTimer>
#include <QJsonObject>
#include <QObject>

#include <optional>

class PluginLink;

/**
 * The display's advertising: plays what the register shows and reports each result, which makes the
 * register show the next one; not at once, even if it failed at once. A result that does not reach
 * the plug-in is sent again every second, until it does or another advertisement comes. One that
 * arrived although its answer was lost is then reported twice.
 *
 * Owner: the display. Thread: the main thread. Errors: an advertisement that cannot be played is
 * reported as such. Shut-down: the destructor drops what is being played; nothing is reported then.
 */
class Advertising : public QObject
{
    Q_OBJECT

public:
    /// `link` must live longer.
    explicit Advertising(PluginLink &link);

    void play(const QJsonObject &ad);

    /// Ends the one being played, and reports nothing.
    void stop();
    /// The one being played could not be shown after all; another one's number is too late.
    void fail(int number, const QString &reason);
    /// Reports a result once more, whatever became of the advertisement.
    void sendResult(bool shown);

    /// Counts the advertisements; that of the one being played.
    int number() const { return m_played; }
    const AdContent &content() const { return m_player.content(); }

    int shown() const { return m_shown; }
    int failed() const { return m_failed; }
    int streamPictures() const { return m_player.streamPictures(); }

Q_SIGNALS:
    /// There is something else to be shown.
    void contentChanged();

private:
    void finish(bool shown);
    void report(int number);

    PluginLink &m_link;
    AdPlayer m_player;
    QString m_address; // of the one being played
    QElapsedTimer m_sinceArrival;
    int m_played = 0;
    std::optional<bool> m_result; // of the one being played, once it is known
    int m_shown = 0;
    int m_failed = 0;
};
