#pragma once

#include <QByteArray>
#include <QUrl>

#include <future>
#include <mutex>

/**
 * A server on the loopback address that answers any request with the bytes that it was given last,
 * and closes.
 *
 * Owner: a target. Thread: it serves on one of its own; the members are for the target's.
 * Errors: without a port the program ends. Shut-down: none, it lives as long as the process.
 */
class AnswerServer
{
public:
    AnswerServer();

    void setAnswer(const QByteArray &bytes);
    QUrl url() const { return m_url; }

private:
    [[noreturn]] void serve(std::promise<int> port);

    std::mutex m_mutex;
    QByteArray m_answer; // guarded by m_mutex
    QUrl m_url;
};
