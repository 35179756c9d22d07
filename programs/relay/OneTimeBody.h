#pragma once

#include <QByteArray>
#include <QIODevice>

/**
 * The body of a request that must not be sent twice: Qt's network access repeats a request by
 * itself when the connection breaks, unless it cannot rewind the body.
 *
 * Owner: who sends the request. Thread: the owner's.
 */
class OneTimeBody : public QIODevice
{
    Q_OBJECT

public:
    explicit OneTimeBody(QByteArray content);

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override;
    bool reset() override { return false; }

protected:
    qint64 readData(char *to, qint64 maxSize) override;
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    const QByteArray m_content;
    qint64 m_read = 0;
};
