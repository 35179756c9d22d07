#pragma once

#include <QByteArray>
#include <QList>

/**
 * Takes apart a "multipart/x-mixed-replace" body while it arrives: a stream of pictures, each a
 * part with its length in "Content-Length".
 *
 * Errors: a stream of another form, or a part beyond 8 MiB, is failed for good. A value type.
 */
class MultipartReader
{
public:
    /// Reads the boundary out of the field "Content-Type"; failed if it names none.
    explicit MultipartReader(const QByteArray &contentType);

    /// Takes the next bytes; returns the contents of the parts that they complete.
    QList<QByteArray> feed(const QByteArray &bytes);

    bool hasFailed() const { return m_failed; }

private:
    bool readHeader();

    QByteArray m_delimiter; // line before each part
    QByteArray m_received;
    qsizetype m_expected = -1; // size of the part being read; -1 while its header is
    bool m_failed = false;
};
