#pragma once

#include <display/Advertising.h>
#include <display/ArrivalQueue.h>
#include <display/ConformanceCheck.h>
#include <display/CustomerScreen.h>
#include <display/DisplayOptions.h>
#include <display/Inspector.h>
#include <display/Journal.h>
#include <display/Pictures.h>
#include <display/PluginLink.h>
#include <display/Recorder.h>

#include <pages/PageRoutes.h>

#include <HttpGuard.h>
#include <HttpServer.h>

#include <QMap>
#include <QObject>

#include <memory>
#include <optional>

/**
 * The display application: receives messages over HTTP, acknowledges each with an empty 200,
 * refuses what is no message and says why, prints a line for each and keeps the record. It asks the
 * plug-in for the pictures of the goods on the receipt, plays advertisements, and serves the
 * customer's screen and the inspector.
 *
 * Owner: main. Thread: the main thread.
 * Errors: the constructor throws UsageError if the record cannot be written; `isListening` tells
 * whether the ports could be bound.
 * Shut-down: the destructor waits for the request to the plug-in that is under way.
 */
class Display : public QObject
{
    Q_OBJECT

public:
    explicit Display(const DisplayOptions &options);

    bool isListening() const { return errorString().isEmpty(); }
    /// Which port could not be bound, and why; empty if none.
    QString errorString() const;
    /// That port, if there is such an error.
    int failedPort() const;
    int port() const { return m_server.port(); }
    /// The second port; 0 if there is none.
    int pagePort() const { return m_pageServer ? m_pageServer->port() : 0; }
    /// How many messages are still to be answered.
    std::size_t waiting() const { return m_arrivals.size(); }

    /// Prints how many messages of each type arrived, how pictures and advertisements fared, and
    /// what was checked.
    void printSummary() const;
    /// Writes what was checked to the file that the options name, if they do. Throws UsageError.
    void writeReport() const;
    /// Whether what was to be checked was right; true if nothing was to be.
    bool hasPassed() const { return !m_check || m_check->hasPassed(); }

private:
    void receive(HttpServer &server, const RequestHeader &header, const QByteArray &content);
    void receiveMessage(HttpServer &server, const RequestHeader &header, const QByteArray &content);
    bool servePage(HttpServer &server, const RequestHeader &header, const QByteArray &content);
    void check(const RequestHeader &header, const Arrival &arrival);
    void answer(Arrival arrival);
    void cutWaiting();
    void note(const Arrival &arrival);
    void takeUpState();
    void act(const QString &type, const QJsonObject &body);
    void askForPictures(const QJsonObject &receipt);
    void addActions();

    const double m_startedMs;
    const DisplayOptions m_options;
    HttpServer m_server;
    std::unique_ptr<HttpServer> m_pageServer; // null without a second port
    const HttpGuard m_guard;                  // of the pages; messages may come from anywhere
    std::optional<Recorder> m_recorder;
    std::optional<ConformanceCheck> m_check;
    int m_received = 0;
    QMap<QString, int> m_accepted; // by type
    int m_refused = 0;
    Journal m_journal;
    Pictures m_pictures;
    PluginLink m_link;
    Advertising m_advertising;
    CustomerScreen m_screen;
    Inspector m_inspector;
    ArrivalQueue m_arrivals;
    PageRoutes m_routes;
};
