#include <adservice/PictureStream.h>

#include <adservice/InterruptibleSleep.h>
#include <common/EventLine.h>

#include <algorithm>
#include <utility>

PictureStream::PictureStream(std::chrono::milliseconds frameTime, std::chrono::seconds duration,
                             std::stop_token stop)
    : m_frameTime(frameTime)
    , m_stop(std::move(stop))
    , m_due(std::chrono::steady_clock::now())
    , m_end(duration.count() == 0 ? TimePoint::max() : m_due + duration)
{
    printEvent(QStringLiteral("Stream"), QStringLiteral("started"));
}

PictureStream::~PictureStream()
{
    printEvent(QStringLiteral("Stream"), QStringLiteral("ended, pictures: %1").arg(m_pictures));
}

QByteArray PictureStream::next()
{
    if (m_lastIsOut) {
        sleepUntil(m_stop, m_end);
        return {};
    }
    if (!sleepUntil(m_stop, m_due))
        return {};
    m_lastIsOut = m_end - m_due <= m_frameTime;
    m_due = std::max(m_due + m_frameTime, std::chrono::steady_clock::now()); // a slow viewer's skip
    return nextPart(m_lastIsOut);
}

/// The boundary that ends a picture goes with it: a viewer cannot show the picture before.
QByteArray PictureStream::nextPart(bool isLast)
{
    const QByteArray jpeg = m_picture.jpeg(m_pictures);
    const QByteArray opening = m_pictures == 0 ? "--picture\r\n" : "";
    ++m_pictures;
    return opening +
           "Content-Type: image/jpeg\r\nContent-Length: " + QByteArray::number(jpeg.size()) +
           "\r\n\r\n" + jpeg + (isLast ? "\r\n--picture--\r\n" : "\r\n--picture\r\n");
}
