#pragma once

#include <QByteArray>
#include <QImage>

class QPainter;

/**
 * The moving picture of the stream: a cup of coffee that steams on a shop's counter. It is painted
 * without texts, since fonts would need a display server.
 *
 * Thread: any one at a time.
 */
class StreamPicture
{
public:
    static constexpr int width = 640;  // pixels
    static constexpr int height = 360; // pixels
    /// Pictures until the movement starts again.
    static constexpr int period = 40;

    StreamPicture();

    QImage image(int frame) const;
    QByteArray jpeg(int frame) const;

private:
    QImage m_still; // what does not move
};
