#include "Count.h"
#include "Paths.h"

#include <view/Messages.h>

#include <vector>

namespace {

using view::Message;
using view::Messages;
using Type = Message::Type;

/// A queue for each run, so that each finds the same.
using Queues = std::vector<Messages>;

Message numbered(Type type)
{
    return {type, {{QStringLiteral("number"), 1}}};
}

Queues queues(int repetitions, std::initializer_list<Type> waiting)
{
    Queues queues(static_cast<std::size_t>(warmUps + repetitions));
    for (auto &queue : queues) {
        for (const Type type : waiting)
            queue.insert(numbered(type));
    }
    return queues;
}

void countInsert(const char *name, int repetitions, Type type,
                 std::initializer_list<Type> alreadyWaiting)
{
    auto fresh = queues(repetitions, alreadyWaiting);
    const Message message = numbered(type);
    count(name, repetitions, [&](int i) { fresh[static_cast<std::size_t>(i)].insert(message); });
}

void countTake(const char *name, int repetitions, std::initializer_list<Type> waiting)
{
    auto filled = queues(repetitions, waiting);
    count(name, repetitions, [&](int i) {
        auto &queue = filled[static_cast<std::size_t>(i)];
        queue.remove(queue.first()->type);
    });
}

} // namespace

void countQueue(int repetitions)
{
    countInsert("queue insert, the type waits", repetitions, Type::UpdateDocument,
                {Type::UpdateDocument, Type::ShowAd});
    countInsert("queue insert, the type is new", repetitions, Type::UpdateDocument, {Type::ShowAd});
    countInsert("queue insert, a further picture", repetitions, Type::ImageData,
                {Type::ImageData, Type::ShowAd});
    countTake("queue take", repetitions, {Type::UpdateDocument, Type::ShowAd});
    countTake("queue take, a picture of two", repetitions, {Type::ImageData, Type::ImageData});
}
