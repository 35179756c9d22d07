#include "Request.h"

#include <QDir>
#include <QFile>

#include <stdexcept>

namespace inbound {

Request Request::parsed(const QByteArray &text)
{
    const auto headSize = text.indexOf("\n\n");
    if (headSize < 0)
        throw std::runtime_error("a request of the corpus has no empty line");
    auto lines = text.left(headSize).split('\n');
    const auto words = lines.takeFirst().split(' ');
    Request request{words.value(0), words.value(1), words.value(2), {}, text.mid(headSize + 2)};
    request.body = request.body.trimmed();
    for (const auto &line : lines) {
        const auto colon = line.indexOf(':');
        request.fields.append({line.left(colon), line.mid(colon + 1)});
    }
    return request;
}

QList<Request> Request::corpus()
{
    const QDir folder(QStringLiteral(INBOUND_CORPUS));
    QList<Request> requests;
    for (const auto &name : folder.entryList({QStringLiteral("*.http")}, QDir::Files, QDir::Name)) {
        QFile file(folder.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            requests.append(parsed(file.readAll()));
    }
    if (requests.isEmpty())
        throw std::runtime_error("there is no corpus");
    return requests;
}

QByteArray Request::bytes() const
{
    auto bytes = method + ' ' + target + ' ' + version + "\r\n";
    for (const auto &field : fields)
        bytes += field.name + ':' + field.value + "\r\n";
    return bytes + framedBody();
}

QByteArray Request::framedBody() const
{
    if (chunkSize == 0)
        return "Content-Length: " + lengthPrefix + QByteArray::number(body.size()) + "\r\n\r\n" +
               body;
    QByteArray framed = "Transfer-Encoding: chunked\r\n\r\n";
    for (qsizetype at = 0; at < body.size(); at += chunkSize) {
        const auto chunk = body.mid(at, chunkSize);
        framed += lengthPrefix + QByteArray::number(chunk.size(), 16) + chunkExtension + "\r\n" +
                  chunk + "\r\n";
    }
    return framed + '0' + chunkExtension + "\r\n" + trailer + "\r\n";
}

} // namespace inbound
