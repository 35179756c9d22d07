#include "Count.h"
#include "Paths.h"
#include "RunningPlugin.h"

#include <support/RawClient.h>

#include <stdexcept>

namespace {

using support::RawClient;

/// All on one connection, as a display does.
void countRequest(const char *name, int repetitions, const RunningPlugin &plugin,
                  const QByteArray &body)
{
    RawClient client(plugin.port());
    const auto request = RawClient::request("/", body, "Content-Type: application/json\r\n");
    count(
        name, repetitions,
        [&](int) {
            client.send(request);
            if (client.answer().status != 200)
                throw std::runtime_error("the plug-in does not answer");
        },
        [&] { plugin.settle(); });
}

} // namespace

void countRequests(const QString &pluginFile, int repetitions)
{
    const RunningPlugin plugin(pluginFile);
    countRequest("request that asks for nothing", repetitions, plugin, "{}");
    countRequest("result of an advertisement", repetitions, plugin,
                 R"({"type":"result","name":"adResult","value":true})");
}
