#pragma once

#include <QString>

namespace doctor {

/// A text that may be an address, without the user's name and password, the query and the fragment;
/// what is left out leaves a mark.
QString redactedUrl(const QString &text);

/// Any text, redacted if it looks like an address.
QString redactedText(const QString &text);

} // namespace doctor
