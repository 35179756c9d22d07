#pragma once

#include <HttpServer.h>

#include <QByteArray>
#include <QJsonObject>
#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>
#include <vector>

class HttpStream;

/**
 * The pages that follow what happens, as server-sent events.
 *
 * Owner: the program's server side. Thread: that of its HttpServer. Errors: a page that has gone,
 * or reads too slowly, is forgotten; it connects again by itself. Shut-down: the destructor ends
 * the streams.
 */
class EventStreams : public QObject
{
    Q_OBJECT

public:
    EventStreams();

    static QByteArray event(const QString &name, const QJsonObject &data);
    /// `json` is on one line.
    static QByteArray event(const QString &name, const QByteArray &json);

    /// Answers the request being delivered with events, beginning with `first`.
    void open(HttpServer &server, const QByteArray &first);
    void publish(const QByteArray &event);
    void publish(const QString &name, const QJsonObject &data);
    bool isEmpty() const { return m_streams.empty(); }

private:
    std::vector<std::shared_ptr<HttpStream>> m_streams;
    QTimer m_heartbeat; // shows which pages have gone
};
