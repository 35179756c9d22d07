#pragma once

#include <QByteArray>
#include <QList>

namespace inbound {

/// A well-formed request by its parts. A value type.
struct Request
{
    struct Field
    {
        QByteArray name;
        QByteArray value; // with the blanks around it
    };

    QByteArray method;
    QByteArray target;
    QByteArray version;
    QList<Field> fields; // all but those that say where the body ends
    QByteArray body;
    int chunkSize = 0;              // 0: the body has its length in a field
    QByteArray lengthPrefix = {};   // zeros
    QByteArray chunkExtension = {}; // with its semicolon
    QByteArray trailer = {};        // lines

    /// A request of the corpus: head, empty line and body, each line of the head ending with LF.
    static Request parsed(const QByteArray &text);
    /// All of them, in the order of the files' names.
    static QList<Request> corpus();

    /// As it is sent.
    QByteArray bytes() const;

private:
    QByteArray framedBody() const;
};

} // namespace inbound
