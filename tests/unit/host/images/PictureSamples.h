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
