#pragma once

#include <HttpServer.h>
#include <Locker.h>

#include <QJsonObject>
#include <QList>
#include <QObject>
#include <QStringList>
#include <QThread>

#include <chrono>
#include <memory>
#include <mutex>

namespace support {

/// A customer display that only remembers what it is told. It listens on a port that the system
/// chose and answers on a thread of its own, so that a test may block.
///
/// Owner and thread: the test; every member may be called from any thread.
class RecordingDisplay
{
public:
    using Clock = std::chrono::steady_clock;

    struct Request
    {
        RequestHeader header;
        QByteArray content;
        QString path;
        QJsonObject body; // empty if the content is no JSON object
        Clock::time_point at;
    };

    RecordingDisplay();
    ~RecordingDisplay();
    Q_DISABLE_COPY_MOVE(RecordingDisplay)

    int port() const { return m_port; }
    QString url() const { return QString("http://127.0.0.1:%1").arg(m_port); }

    /// What is answered from now on; 200 unless set.
    void setStatus(int status) { m_state.lock()->status = status; }

    /// Closes the port; `comeBack` opens the same one again.
    void goDown();
    void comeBack();

    QList<Request> requests() const { return m_state.lock()->requests; }
    QStringList paths() const;

private:
    struct State
    {
        int status = 200;
        QList<Request> requests;
    };

    void listen(int port);
    template <class Function>
    void onOwnThread(Function function)
    {
        QMetaObject::invokeMethod(&m_context, function, Qt::BlockingQueuedConnection);
    }
    void receive(const RequestHeader &header, const QByteArray &content);

    QThread m_thread;
    QObject m_context;                    // lives on m_thread
    std::unique_ptr<HttpServer> m_server; // lives on m_thread; null while down
    int m_port = 0;
    Locker<State, std::mutex> m_state;
};

} // namespace support
