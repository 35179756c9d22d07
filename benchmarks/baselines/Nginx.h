#pragma once

#include <QProcess>
#include <QTemporaryDir>

namespace bench {

/// nginx with one worker, which answers every request 200 without a body: no other program hears of
/// it. Thread: any one. Errors: the constructor throws std::runtime_error if it is not installed or
/// does not start. Shut-down: the destructor ends the process.
class Nginx
{
public:
    Nginx();
    ~Nginx();
    Q_DISABLE_COPY_MOVE(Nginx)

    int port() const { return m_port; }

private:
    QTemporaryDir m_folder;
    int m_port;
    QProcess m_process;
};

} // namespace bench
