#include <support/PluginHost.h>

#include <BasicPlugin.h>
#include <Config.h>
#include <DocumentWatcher.h>
#include <Singleton.h>
#include <plugin/ViewConnector.h>

namespace bench {

namespace {

constexpr control::Action receiptChanged{EContext::Sale, control::ReceiptChanged};

} // namespace

PluginHost::PluginHost(const std::string &displayUrl, std::chrono::milliseconds interval, int port)
    : m_loader(QStringLiteral(VIEWCONNECTOR_PLUGIN))
{
    auto &config = Singleton<Config>::instance();
    config.setValue(QStringLiteral("ViewConnector:server"), QString::fromStdString(displayUrl));
    config.setValue(QStringLiteral("ViewConnector:interval"), static_cast<int>(interval.count()));
    config.setValue(QStringLiteral("ViewConnector:port"), port);
    m_runner.addPlugin(m_loader.plugin());
    m_loader.plugin()->init();
}

PluginHost::~PluginHost()
{
    m_loader.plugin()->deinit();
    m_runner.removePlugin(m_loader.plugin());
}

void PluginHost::setDocument(const QSharedPointer<AbstractDocument> &document)
{
    m_loader.documentWatcher()->setDocument(document);
}

void PluginHost::reportChange() const
{
    m_runner.run(receiptChanged);
}

void PluginHost::queue(const view::Message &message) const
{
    static_cast<ViewConnector *>(m_loader.object())->addMessage(message);
}

} // namespace bench
