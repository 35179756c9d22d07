#include <RequestHeader.h>

#include <utility>

RequestHeader::RequestHeader(QString method, QString path)
    : m_method(std::move(method)), m_path(std::move(path))
{
}
