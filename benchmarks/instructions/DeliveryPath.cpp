#include "Count.h"
#include "Paths.h"
#include "Settings.h"

#include <support/FreshSingletons.h>
#include <support/LogCapture.h>
#include <support/ScriptedServer.h>

#include <view/Client.h>

void countDelivery(int repetitions)
{
    const support::LogCapture log;
    const support::FreshSingletons host;
    support::ScriptedServer display;
    setUnhurriedClient(host.config(), display.url({}));

    const auto queue = QSharedPointer<Locker<view::Messages, QMutex>>::create();
    view::Client client;
    client.setMessages(queue);
    const view::Message message(view::Message::Type::UpdateDocument,
                                {{QStringLiteral("total"), 8990}});
    count("delivery of a message", repetitions, [&](int) {
        queue->lock()->insert(message);
        client.onTimeout();
    });
}
