#pragma once

#include <QStringView>

namespace doctor {

/// How many characters must be inserted, deleted or replaced, or neighbours exchanged, to make one
/// text of the other; upper and lower case are the same.
int editDistance(QStringView a, QStringView b);

} // namespace doctor
