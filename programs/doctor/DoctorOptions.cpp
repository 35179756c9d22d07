#include <doctor/DoctorOptions.h>

#include <common/CommandLine.h>
#include <common/UsageError.h>

namespace doctor {

namespace {

Language readLanguage(const QString &code)
{
    if (code == u"ru")
        return Language::Russian;
    if (code == u"en")
        return Language::English;
    throw UsageError(QStringLiteral("--language \"%1\" is unknown: give ru or en.").arg(code));
}

} // namespace

std::optional<DoctorOptions> DoctorOptions::parse(const QStringList &arguments,
                                                  const QString &defaultPlugin)
{
    const auto config = QStringLiteral("config");
    const auto plugin = QStringLiteral("plugin");
    const auto images = QStringLiteral("images");
    const auto json = QStringLiteral("json");
    const auto bundle = QStringLiteral("bundle");
    const auto language = QStringLiteral("language");

    CommandLine line(QStringLiteral("Finds out why a customer display is dark: checks settings, "
                                    "plug-in, port, display and advertisements, and changes "
                                    "nothing."));
    line.addOption(config, QStringLiteral("Settings of the register, in TOML."),
                   QStringLiteral("FILE"));
    line.addOption(plugin, QStringLiteral("Plug-in that the register loads (that of this build)."),
                   QStringLiteral("FILE"));
    line.addOption(images, QStringLiteral("Folder of the goods' pictures."), QStringLiteral("DIR"));
    line.addFlag(json, QStringLiteral("Print the findings as one JSON object."));
    line.addOption(bundle,
                   QStringLiteral("Write a support bundle to FILE, a .tar.gz without secrets."),
                   QStringLiteral("FILE"));
    line.addOption(language, QStringLiteral("Language of the texts (that of the settings)."),
                   QStringLiteral("ru|en"));
    if (!line.parse(arguments))
        return std::nullopt;
    if (!line.isSet(config))
        throw UsageError(QStringLiteral("--config is missing: give the register's settings file, "
                                        "for example --config /etc/viewconnector/shop.toml."));

    DoctorOptions options;
    options.configFile = line.value(config);
    options.pluginFile = line.isSet(plugin) ? line.value(plugin) : defaultPlugin;
    options.imagesFolder = line.value(images);
    options.json = line.isSet(json);
    options.bundleFile = line.value(bundle);
    if (line.isSet(language))
        options.language = readLanguage(line.value(language));
    options.debug = line.debug();
    return options;
}

} // namespace doctor
