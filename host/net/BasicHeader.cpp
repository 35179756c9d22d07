#include <BasicHeader.h>

#include <algorithm>

namespace {

const auto contentTypeField = QStringLiteral("Content-Type");

bool isNamed(const BasicHeader::Field &field, const QString &name)
{
    return field.first.size() == name.size() && field.first.compare(name, Qt::CaseInsensitive) == 0;
}

} // namespace

QString BasicHeader::value(const QString &name) const
{
    const auto found = std::find_if(m_fields.cbegin(), m_fields.cend(),
                                    [&](const Field &field) { return isNamed(field, name); });
    return found == m_fields.cend() ? QString() : found->second;
}

void BasicHeader::setValue(const QString &name, const QString &value)
{
    m_fields.removeIf([&](const Field &field) { return isNamed(field, name); });
    addValue(name, value);
}

void BasicHeader::addValue(const QString &name, const QString &value)
{
    m_fields.emplaceBack(name, value);
}

QString BasicHeader::contentType() const
{
    return value(contentTypeField);
}

void BasicHeader::setContentType(const QString &type)
{
    setValue(contentTypeField, type);
}
