#pragma once

#include <AbstractDocument.h>
#include <ActionRunner.h>
#include <PluginLoader.h>
#include <view/Message.h>

#include <QSharedPointer>

#include <chrono>
#include <string>

namespace bench {

/**
 * A register around the plug-in of the same build: loads it as any host does, starts it with the
 * given settings, and runs its triggers.
 *
 * Owner: a benchmark; one at a time. Thread: the main thread. Errors: PluginError.
 * Shut-down: the destructor ends and destroys the plug-in.
 */
class PluginHost
{
public:
    /// `displayUrl` is where the plug-in posts to; it listens on `port`, 0 for one that the system
    /// chooses.
    explicit PluginHost(const std::string &displayUrl,
                        std::chrono::milliseconds interval = std::chrono::milliseconds(1),
                        int port = 0);
    ~PluginHost();
    Q_DISABLE_COPY_MOVE(PluginHost)

    void setDocument(const QSharedPointer<AbstractDocument> &document);
    /// What the register does after each change of the receipt.
    void reportChange() const;
    /// Queues a message past what would ask for it.
    void queue(const view::Message &message) const;

private:
    PluginLoader m_loader;
    ActionRunner m_runner;
};

} // namespace bench
