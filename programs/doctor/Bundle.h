#pragma once

#include <doctor/Diagnosis.h>

#include <QByteArray>
#include <QMap>

namespace doctor {

/// The files of a support bundle, by name. None of them holds a key, a password or the query of an
/// address.
QMap<QString, QByteArray> bundleFiles(const Diagnosis &diagnosis, Language language);

/// Writes files as a .tar.gz, with the system's tar; only its owner can read it. Throws UsageError,
/// and leaves what was there, if that fails.
void writeBundle(const QString &fileName, const QMap<QString, QByteArray> &files);

} // namespace doctor
