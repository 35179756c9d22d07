#pragma once

#include <adservice/StreamPicture.h>

#include <QByteArray>
#include <QtGlobal>

#include <chrono>
#include <stop_token>

/**
 * The body of one stream: the pictures as parts of a multipart message, each when it is due. Prints
 * a line at its start and one at its end.
 *
 * Owner: the answer that it is the body of. Thread: that of the answer's connection.
 * Shut-down: a requested stop ends the stream at once.
 */
class PictureStream
{
public:
    static constexpr auto contentType = "multipart/x-mixed-replace; boundary=picture";

    /// A stream of `duration`, or without end for 0.
    PictureStream(std::chrono::milliseconds frameTime, std::chrono::seconds duration,
                  std::stop_token stop);
    ~PictureStream();
    Q_DISABLE_COPY_MOVE(PictureStream)

    /// Waits until the next picture is due; its part of the message, or nothing at the end.
    QByteArray next();

private:
    using TimePoint = std::chrono::steady_clock::time_point;

    QByteArray nextPart(bool isLast);

    const StreamPicture m_picture;
    const std::chrono::milliseconds m_frameTime;
    const std::stop_token m_stop;
    TimePoint m_due; // of the next picture
    TimePoint m_end;
    bool m_lastIsOut = false;
    int m_pictures = 0;
};
