#pragma once

#include <QString>

/// A text without what opens something in its addresses: users and passwords, the values of
/// arguments, segments of paths that look made by chance.
QString withoutSecretsOfAddresses(const QString &text);

/// The same for what is one address, or its path and query, to its end.
QString maskedAddress(const QString &address);
