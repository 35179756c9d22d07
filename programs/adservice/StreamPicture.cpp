#include <adservice/StreamPicture.h>

#include <QBuffer>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QtMath>

#include <cmath>

namespace {

constexpr int jpegQuality = 85;
constexpr int counterTop = 282;

QPen roundPen(const QColor &color, double width)
{
    return {color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin};
}

void paintWall(QPainter &painter)
{
    QLinearGradient wall(0, 0, 0, counterTop);
    wall.setColorAt(0, QColor("#fdf3df"));
    wall.setColorAt(1, QColor("#f6d7a7"));
    painter.fillRect(0, 0, StreamPicture::width, counterTop, wall);

    QLinearGradient counter(0, counterTop, 0, StreamPicture::height);
    counter.setColorAt(0, QColor("#a8693c"));
    counter.setColorAt(1, QColor("#7a4526"));
    painter.fillRect(0, counterTop, StreamPicture::width, StreamPicture::height - counterTop,
                     counter);
    painter.fillRect(0, counterTop, StreamPicture::width, 6, QColor("#c98a58"));
}

void paintAwning(QPainter &painter)
{
    constexpr int stripe = 64;
    constexpr int depth = 40;
    painter.setPen(Qt::NoPen);
    for (int x = 0; x < StreamPicture::width; x += stripe) {
        painter.setBrush(x / stripe % 2 == 0 ? QColor("#c8553d") : QColor("#fff8ea"));
        painter.drawRect(x, 0, stripe, depth);
        painter.drawChord(x, depth - stripe / 2, stripe, stripe, 180 * 16, 180 * 16);
    }
}

void paintLoaf(QPainter &painter)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(60, 30, 15, 60));
    painter.drawEllipse(52, 300, 180, 22);
    painter.setBrush(QColor("#c98240"));
    painter.drawRoundedRect(56, 240, 168, 72, 44, 36);
    painter.setBrush(QColor("#dfa45f"));
    painter.drawRoundedRect(66, 244, 148, 44, 34, 22);
    painter.setPen(roundPen(QColor("#f3d3a0"), 8));
    for (const int x : {96, 132, 168})
        painter.drawLine(x, 274, x + 20, 254);
}

void paintApple(QPainter &painter)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(60, 30, 15, 60));
    painter.drawEllipse(476, 302, 96, 18);
    painter.setBrush(QColor("#b9342f"));
    painter.drawEllipse(480, 234, 56, 78);
    painter.drawEllipse(508, 234, 56, 78);
    painter.setBrush(QColor(255, 255, 255, 90));
    painter.drawEllipse(492, 248, 14, 26);
    painter.setPen(roundPen(QColor("#5b3a1e"), 5));
    painter.drawLine(522, 242, 526, 222);
}

void paintCup(QPainter &painter)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(60, 30, 15, 70));
    painter.drawEllipse(250, 304, 190, 26);
    painter.setBrush(QColor("#fffaf0"));
    painter.drawEllipse(258, 294, 172, 26);
    painter.setPen(roundPen(QColor("#2f6f73"), 14));
    painter.setBrush(Qt::NoBrush);
    painter.drawArc(386, 214, 58, 52, -100 * 16, 200 * 16);

    QPainterPath cup;
    cup.moveTo(278, 196);
    cup.cubicTo(280, 270, 296, 306, 326, 306);
    cup.lineTo(362, 306);
    cup.cubicTo(392, 306, 408, 270, 410, 196);
    cup.closeSubpath();
    painter.fillPath(cup, QColor("#3b8488"));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor("#fffaf0"));
    painter.drawEllipse(276, 180, 136, 32);
    painter.setBrush(QColor("#5a3220"));
    painter.drawEllipse(286, 185, 116, 23);
}

/// One wisp of steam: a line that sways more the higher it is, and drifts upwards.
void paintSteam(QPainter &painter, double left, double phase)
{
    constexpr int top = 72;
    constexpr int bottom = 188;
    constexpr int step = 4;
    const double rise = bottom - top;
    for (int y = bottom; y > top; y -= step) {
        const auto x = [&](int at) {
            const double height = (bottom - at) / rise;
            return left + 16 * height * std::sin(2 * M_PI * 1.2 * height - phase);
        };
        const double height = (bottom - y) / rise;
        const auto opacity = static_cast<int>(170 * std::sin(M_PI * height));
        painter.setPen(roundPen(QColor(255, 255, 255, opacity), 9 - 4 * height));
        painter.drawLine(QPointF(x(y), y), QPointF(x(y - step), y - step));
    }
}

void paintSun(QPainter &painter, double phase)
{
    const double radius = 92 + 8 * std::sin(phase);
    QRadialGradient sun(520, 128, radius);
    sun.setColorAt(0, QColor(255, 214, 120, 200));
    sun.setColorAt(1, QColor(255, 214, 120, 0));
    painter.setPen(Qt::NoPen);
    painter.setBrush(sun);
    painter.drawEllipse(QPointF(520, 128), radius, radius);
}

void paintLeaf(QPainter &painter, double phase)
{
    painter.save();
    painter.translate(526, 226);
    painter.rotate(8 * std::sin(phase));
    QPainterPath leaf;
    leaf.cubicTo(8, -26, 34, -28, 44, -16);
    leaf.cubicTo(34, 2, 14, 4, 0, 0);
    painter.fillPath(leaf, QColor("#5c9a4a"));
    painter.restore();
}

} // namespace

StreamPicture::StreamPicture() : m_still(width, height, QImage::Format_RGB32)
{
    QPainter painter(&m_still);
    painter.setRenderHint(QPainter::Antialiasing);
    paintWall(painter);
    paintAwning(painter);
    paintLoaf(painter);
    paintApple(painter);
    paintCup(painter);
}

QImage StreamPicture::image(int frame) const
{
    const double phase = 2 * M_PI * (frame % period) / period;
    QImage image = m_still;
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paintSun(painter, phase);
    paintLeaf(painter, phase);
    constexpr double wispDistance = 34;
    for (int wisp = -1; wisp <= 1; ++wisp)
        paintSteam(painter, 344 + wisp * wispDistance, phase + 2 * wisp);
    return image;
}

QByteArray StreamPicture::jpeg(int frame) const
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image(frame).save(&buffer, "JPEG", jpegQuality);
    return bytes;
}
