// Two threads use a queue without its mutex. ThreadSanitizer must report it.

#include <view/Messages.h>

#include <thread>

int main()
{
    view::Messages messages;
    const auto produce = [&messages] {
        for (int i = 0; i < 1000; ++i)
            messages.insert({view::Message::Type::Content, {{QStringLiteral("n"), i}}});
    };
    std::thread other(produce);
    produce();
    other.join();
}
