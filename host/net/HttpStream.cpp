#include <HttpStream.h>

#include "HttpStreamSource.h"

#include <utility>

HttpStream::HttpStream(std::shared_ptr<HttpStreamSource> source) : m_source(std::move(source)) {}

HttpStream::~HttpStream()
{
    m_source->end();
}

void HttpStream::write(const QByteArray &piece)
{
    m_source->write(piece);
}

bool HttpStream::isOpen() const
{
    return m_source->isOpen();
}
