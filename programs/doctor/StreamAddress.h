#pragma once

#include <QString>
#include <QUrl>

namespace doctor {

/// Where a display fetches the pictures of an ad service's stream; holds the stream's key.
QUrl streamAddress(const QString &listen, const QString &number, const QString &key);

/// The same for an address like ads://host:port?stream=1&key=K; any other address as it is.
QUrl fetchedAddress(const QUrl &advertisement);

} // namespace doctor
