#include <record/WireRecorder.h>

#include <common/MonotonicClock.h>
#include <record/ExchangeLine.h>

WireRecorder::WireRecorder(const RecordOptions &options)
    : m_options(options)
    , m_startedMs(monotonicMs())
    , m_toDisplay(options.port, options.displayUrl)
    , m_toPlugin(options.pluginPort, options.pluginUrl)
{
    if (!isListening())
        return;
    m_file.emplace(options.output);
    connect(&m_toDisplay, &Relay::exchanged, this,
            [this](const Exchange &exchange) { write(true, exchange); });
    connect(&m_toPlugin, &Relay::exchanged, this,
            [this](const Exchange &exchange) { write(false, exchange); });
}

QString WireRecorder::failedOption() const
{
    return m_toDisplay.isListening() ? QStringLiteral("plugin-port") : QStringLiteral("port");
}

QString WireRecorder::errorString() const
{
    return m_toDisplay.isListening() ? m_toPlugin.errorString() : m_toDisplay.errorString();
}

void WireRecorder::write(bool isToDisplay, const Exchange &exchange)
{
    ++(isToDisplay ? m_messages : m_requests);
    const LinePlace place{m_messages + m_requests, exchange.startedMs - m_startedMs, isToDisplay};
    m_file->write(exchangeLine(place, exchange, m_options.redacts));
}
