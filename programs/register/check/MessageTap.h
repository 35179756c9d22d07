#pragma once

#include <register/check/Post.h>

#include <HttpServer.h>

#include <QObject>

/**
 * Stands where the plug-in posts to, and accepts everything: whatever the display under test makes
 * of a message, the next one comes.
 *
 * Owner: the check. Thread: the main thread. Errors: a port that cannot be had leaves `port` 0.
 */
class MessageTap : public QObject
{
    Q_OBJECT

public:
    MessageTap();

    int port() const { return m_server.port(); }

Q_SIGNALS:
    void received(const Post &post);

private:
    HttpServer m_server;
};
