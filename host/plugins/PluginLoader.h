#pragma once

#include <HostExport.h>

#include <QPluginLoader>
#include <QString>

#include <stdexcept>

class BasicPlugin;
class DocumentWatcher;

/// Says which plug-in file cannot be used and why; the text is meant for people.
class HOST_EXPORT PluginError : public std::runtime_error
{
public:
    explicit PluginError(const QString &message) : std::runtime_error(message.toStdString()) {}
};

/**
 * Loads one plug-in library and holds its object.
 *
 * Owner: the host. The plug-in object lives until `unload` or the loader's destruction.
 * Thread: the host's main thread.
 * Errors: the constructor throws PluginError if the file is missing, is no Qt plug-in, has another
 * interface or is no plug-in of this host, and what the plug-in's own constructor throws.
 * Shut-down: destroys the plug-in object and lets go of the library.
 */
class HOST_EXPORT PluginLoader
{
public:
    /// The interface identifier that a plug-in's metadata must carry.
    static constexpr auto interfaceId = "su.tavro.AbstractPlugin";

    explicit PluginLoader(const QString &fileName);
    ~PluginLoader();
    Q_DISABLE_COPY_MOVE(PluginLoader)

    /// The plug-in; null after `unload`.
    BasicPlugin *plugin() const { return m_plugin; }
    /// The same object as a QObject; null after `unload`.
    QObject *object() const { return m_object; }
    /// The plug-in's interest in the current document; null if it has none, and after `unload`.
    DocumentWatcher *documentWatcher() const { return m_documentWatcher; }

    void unload();

private:
    void load(const QString &fileName);

    QPluginLoader m_library;
    QObject *m_object = nullptr;
    BasicPlugin *m_plugin = nullptr;
    DocumentWatcher *m_documentWatcher = nullptr;
};
