#pragma once

#include <QString>
#include <QStringList>

namespace doctor {

/// The right key that is most probably meant by an unknown one: the same in other letters first,
/// then the same name in another group, then the one with the fewest mistakes. Empty if there is
/// none that is like it.
QString nearestKey(const QString &unknown, const QStringList &rightKeys);

} // namespace doctor
