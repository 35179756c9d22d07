#pragma once

#include <doctor/Text.h>

namespace doctor {

/// Why a picture cannot be shown, which the host tells in Russian for its log, in each language.
Text pictureWords(const QString &problem);

} // namespace doctor
