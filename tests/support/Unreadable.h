#pragma once

#include <QMetaType>
#include <QString>
#include <QVariant>

#include <stdexcept>

namespace support {

/// A value of a host whose conversion to what a plug-in asks for throws std::runtime_error.
struct Unreadable
{
    /// One in a QVariant, where its conversions are looked up.
    static QVariant value();
};

} // namespace support

Q_DECLARE_METATYPE(support::Unreadable)

inline QVariant support::Unreadable::value()
{
    static const bool isRegistered =
        QMetaType::registerConverter<Unreadable, QString>(
            [](const Unreadable &) -> QString { throw std::runtime_error("unreadable text"); }) &&
        QMetaType::registerConverter<Unreadable, int>(
            [](const Unreadable &) -> int { throw std::runtime_error("unreadable number"); }) &&
        QMetaType::registerConverter<Unreadable, qlonglong>(
            [](const Unreadable &) -> qlonglong { throw std::runtime_error("unreadable number"); });
    Q_ASSERT(isRegistered);
    return QVariant::fromValue(Unreadable());
}
