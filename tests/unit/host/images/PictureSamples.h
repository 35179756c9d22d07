#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QString>

#include <gtest/gtest.h>

#include <cstdio>

/// A picture of one colour, as a file of that format ("PNG", "JPG", …) holds it.
inline QByteArray encoded(const char *format, Qt::GlobalColor colour = Qt::red,
                          QSize size = QSize(40, 40), QImage::Format pixels = QImage::Format_RGB32)
{
    QImage image(size, pixels);
    image.fill(colour);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    EXPECT_TRUE(buffer.open(QIODevice::WriteOnly));
    EXPECT_TRUE(image.save(&buffer, format)) << format;
    return bytes;
}

inline QByteArray svg(const QByteArray &text)
{
    return "<svg xmlns=\"http://www.w3.org/2000/svg\"><text>" + text + "</text></svg>";
}

/// A picture whose decoder complains, on its own thread, in the log "qt.gui.imageio".
inline QByteArray brokenXpm()
{
    return "/* XPM */\nstatic char *x[] = {\n\"4 4 2 1\",\n\"a\"};\n";
}

/// Bits, written as "0" and "1", as the coded data of a JPEG: filled up with ones, and no mark in
/// them.
inline QByteArray jpegBits(QByteArray bits)
{
    QByteArray bytes;
    bits.append(QByteArray(-bits.size() & 7, '1'));
    for (qsizetype at = 0; at < bits.size(); at += 8) {
        bytes.append(static_cast<char>(bits.mid(at, 8).toInt(nullptr, 2)));
        if (bytes.endsWith('\xff'))
            bytes.append('\0');
    }
    return bytes;
}

/// A progressive JPEG of 200 KB, white, in so many passes that it takes many seconds to unpack.
inline QByteArray jpegOfManyScans()
{
    constexpr int blocks = 700 * 700; // of 8 by 8 pixels
    constexpr int longestRun = 32'767;
    constexpr int lastRun = blocks % longestRun;
    const auto oneCode = QByteArray::fromHex("01000000000000000000000000000000"); // of one bit
    const QByteArray head =
        QByteArray::fromHex("ffd8ffdb004300") + QByteArray(64, '\1') +
        QByteArray::fromHex("ffc2000b0815e015e001011100") + // grey, 5600 by 5600
        QByteArray::fromHex("ffc4001400") + oneCode + '\x00' + QByteArray::fromHex("ffc4001410") +
        oneCode + '\xe0';
    const auto dc = QByteArray::fromHex("ffda0008010100000000") + jpegBits(QByteArray(blocks, '0'));
    const auto ac = QByteArray::fromHex("ffda0008010100013f00") +
                    jpegBits(QByteArray("011111111111111").repeated(blocks / longestRun) + "0" +
                             QByteArray::number(lastRun - 16'384, 2).rightJustified(14, '0'));
    return head + dc + ac.repeated(3000) + QByteArray::fromHex("ffd9");
}

/// Writes a file in place: if there is one, it keeps its identity.
inline void write(const QString &fileName, const QByteArray &content)
{
    QFile file(fileName);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << fileName.toStdString();
    ASSERT_EQ(file.write(content), content.size());
}

/// Puts a new file in the place of the one of that name.
inline void replace(const QString &fileName, const QByteArray &content)
{
    const auto other = fileName + ".new";
    write(other, content);
    ASSERT_EQ(std::rename(qPrintable(other), qPrintable(fileName)), 0);
}
