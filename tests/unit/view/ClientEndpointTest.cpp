// Where each message goes.

#include "ClientFixture.h"

namespace {

using view::Message;
using Type = Message::Type;

struct Endpoint
{
    Type type;
    QString path;
};

const Endpoint endpoints[] = {
    {Type::Configure, "/configure"}, {Type::UpdateDocument, "/updateDocument"},
    {Type::QrPayment, "/qrPayment"}, {Type::ShowAd, "/showAD"},
    {Type::PriceList, "/priceList"}, {Type::ImageData, "/image"},
    {Type::Content, "/content"},     {Type::PaymentDraft, "/paymentdraft"},
};

class ClientEndpoint : public ClientFixture
{
};

TEST_F(ClientEndpoint, Each_type_has_its_path_at_the_default_address)
{
    for (const auto &[type, path] : endpoints)
        EXPECT_EQ(client.getUrl(type).toString(), "http://127.0.0.1:38080" + path);
}

TEST_F(ClientEndpoint, The_path_of_the_address_is_replaced)
{
    client.setServerAddress("http://display.example:81/old/path");
    for (const auto &[type, path] : endpoints)
        EXPECT_EQ(client.getUrl(type).toString(), "http://display.example:81" + path);
}

TEST_F(ClientEndpoint, Asking_for_an_address_does_not_change_the_servers)
{
    client.setServerAddress("http://display.example:81/old/path");
    (void)client.getUrl(Type::Configure);
    EXPECT_EQ(client.serverAddress, QUrl("http://display.example:81/old/path"));
}

TEST_F(ClientEndpoint, A_type_without_a_path_has_the_bare_address)
{
    for (const int value : {8, 9, 1000, -1}) {
        client.setServerAddress("http://127.0.0.1:38080");
        EXPECT_EQ(client.getUrl(static_cast<Type>(value)), QUrl("http://127.0.0.1:38080")) << value;
        client.setServerAddress("http://127.0.0.1:38080/some/path");
        EXPECT_EQ(client.getUrl(static_cast<Type>(value)), QUrl("http://127.0.0.1:38080/some/path"))
            << value;
    }
}

TEST_F(ClientEndpoint, A_message_of_a_type_without_a_path_is_posted_to_the_bare_address)
{
    start(10'000);
    insert(static_cast<Type>(8), {{"a", 1}});
    client.hasMessage();
    ASSERT_EQ(rest->postCount(), 1);
    EXPECT_EQ(rest->posts().constFirst().url, QUrl("http://127.0.0.1:38080"));
    EXPECT_TRUE(queue->lock()->isEmpty());
}

TEST_F(ClientEndpoint, Each_message_is_posted_to_the_path_of_its_type)
{
    client.setServerAddress("http://display.example:81/old");
    start(10'000);
    for (const auto &[type, path] : endpoints) {
        insert(type);
        client.onTimeout();
        EXPECT_EQ(rest->posts().constLast().url.toString(), "http://display.example:81" + path);
    }
    EXPECT_EQ(rest->postCount(), std::ssize(endpoints));
}

} // namespace
