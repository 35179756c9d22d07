#pragma once

#include <display/AdPlayer.h>

#include <QJsonObject>
#include <QObject>

class PluginLink;

/**
 * The display's advertising: plays what the register shows and reports each result, which makes the
 * register show the next one. A result that does not reach the plug-in is sent again every second,
 * until it does or another advertisement comes.
 *
 * Owner: the display. Thread: the main thread.
 */
class Advertising : public QObject
{
    Q_OBJECT

public:
    /// `link` must live longer.
    explicit Advertising(PluginLink &link);

    void play(const QJsonObject &ad);

    int shown() const { return m_shown; }
    int failed() const { return m_failed; }
    int streamPictures() const { return m_player.streamPictures(); }

private:
    void finish(bool shown);
    void report(bool shown);

    PluginLink &m_link;
    AdPlayer m_player;
    QString m_address; // of the one being played
    int m_played = 0;
    int m_shown = 0;
    int m_failed = 0;
};
