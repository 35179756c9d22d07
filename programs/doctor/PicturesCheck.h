#pragma once

#include <doctor/Finding.h>

#include <QStringList>

#include <chrono>

namespace doctor {

/// The folder of the goods' pictures: whether the register can read it and show each picture of it,
/// and whether the pictures and the catalogue's names for them fit. Reads for `patience` at most.
Findings checkPictures(const QString &folder, const QStringList &namesInCatalogue,
                       std::chrono::milliseconds patience);

} // namespace doctor
