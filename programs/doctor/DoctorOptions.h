#pragma once

#include <doctor/Text.h>

#include <QString>
#include <QStringList>

#include <optional>

namespace doctor {

/// What the doctor was asked to do on its command line.
struct DoctorOptions
{
    QString configFile;
    QString pluginFile;
    QString imagesFolder; ///< empty: pictures are not checked
    bool json = false;
    QString bundleFile;               ///< empty: no support bundle
    std::optional<Language> language; ///< empty: that of the settings
    bool debug = false;

    /// Empty if the arguments only asked for a text. Throws UsageError. `defaultPlugin` is used
    /// where the arguments name none.
    static std::optional<DoctorOptions> parse(const QStringList &arguments,
                                              const QString &defaultPlugin);
};

} // namespace doctor
