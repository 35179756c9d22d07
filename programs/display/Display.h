#pragma once

#include <common/JsonPoster.h>
#include <display/Advertising.h>
#include <display/DisplayOptions.h>
#include <display/Pictures.h>
#include <display/Recorder.h>

#include <HttpServer.h>

#include <QMap>
#include <QObject>

#include <optional>

/**
 * The display application: receives messages over HTTP, acknowledges each with an empty 200,
 * refuses what is no message and says why, prints a line for each and keeps the record. It asks the
 * plug-in for the pictures of the goods on the receipt and plays advertisements.
 *
 * Owner: main. Thread: the main thread.
 * Errors: the constructor throws UsageError if the record cannot be written; `isListening` tells
 * whether the port could be bound.
 * Shut-down: the destructor waits for the request to the plug-in that is under way.
 */
class Display : public QObject
{
    Q_OBJECT

public:
    explicit Display(const DisplayOptions &options);

    bool isListening() const { return m_server.isListening(); }
    QString errorString() const { return m_server.errorString(); }
    int port() const { return m_server.port(); }

    /// Prints how many messages of each type arrived, and how pictures and advertisements fared.
    void printSummary() const;

private:
    void receive(const RequestHeader &header, const QByteArray &content);
    void answer(const ReceivedMessage &message);
    void act(const ReceivedMessage &message);
    void askForPictures(const QJsonObject &receipt);

    const double m_startedMs;
    std::optional<Recorder> m_recorder;
    HttpServer m_server;
    int m_received = 0;
    QMap<QString, int> m_accepted; // by type
    int m_refused = 0;
    Pictures m_pictures;
    JsonPoster m_link;
    Advertising m_advertising;
};
