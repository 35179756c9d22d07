#pragma once

#include <HostExport.h>

#include <QByteArray>
#include <QIODevice>

#include <chrono>
#include <stop_token>

/**
 * A picture's content as a decoder reads it. It breaks off when there is no more time for it, since
 * some formats say in a few bytes what takes minutes to decode; no decoder can be told so.
 *
 * Owner: whoever reads the picture. Thread: that of its creation; the stop may come from any.
 * Errors: `isBrokenOff` says that the decoder was not given all it asked for.
 */
class HOST_EXPORT PictureBytes : public QIODevice
{
public:
    /// `content` must outlive it. `maxTime` is of the processor, for this thread: who is kept
    /// waiting by others is not to blame.
    PictureBytes(const QByteArray &content, std::stop_token stop, std::chrono::nanoseconds maxTime);

    bool isBrokenOff() const { return m_isBrokenOff; }

    qint64 size() const override { return m_content.size(); }
    bool seek(qint64 position) override;
    bool atEnd() const override { return m_isBrokenOff || QIODevice::atEnd(); }

protected:
    qint64 readData(char *data, qint64 maxSize) override;
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    const QByteArray &m_content;
    const std::stop_token m_stop;
    const std::chrono::nanoseconds m_deadline; // on the processor's clock for this thread
    qint64 m_at = 0;
    bool m_isBrokenOff = false;
};
