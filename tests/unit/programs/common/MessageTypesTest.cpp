#include <common/MessageTypes.h>

#include <support/PrintQt.h>

#include <gtest/gtest.h>

#include <iterator>
#include <string>

namespace {

constexpr MessageType expected[] = {
    {"Configure", "/configure"}, {"UpdateDocument", "/updateDocument"}, {"QrPayment", "/qrPayment"},
    {"ShowAd", "/showAD"},       {"PriceList", "/priceList"},           {"ImageData", "/image"},
    {"Content", "/content"},     {"PaymentDraft", "/paymentdraft"},
};

} // namespace

TEST(MessageTypes, Are_the_eight_in_the_order_of_their_urgency)
{
    ASSERT_EQ(messageTypes.size(), std::size(expected));
    for (std::size_t i = 0; i < messageTypes.size(); ++i) {
        EXPECT_EQ(std::string(messageTypes[i].name), expected[i].name);
        EXPECT_EQ(std::string(messageTypes[i].path), expected[i].path);
    }
}

TEST(MessageTypes, Are_found_by_their_path)
{
    for (const auto &[name, path] : expected)
        EXPECT_EQ(messageTypeOfPath(path), name);
}

TEST(MessageTypes, Have_no_name_for_a_path_that_differs_in_any_way)
{
    for (const auto *path : {"", "/", "configure", "/Configure", "/showAd", "/configure/",
                             "/configure?", "//configure", "/image/1"})
        EXPECT_TRUE(messageTypeOfPath(path).isEmpty()) << path;
}

TEST(MessageTypes, Are_known_by_their_name)
{
    for (const auto &type : expected)
        EXPECT_TRUE(isMessageType(QString::fromStdString(type.name))) << type.name;
    for (const auto *name : {"", "configure", "Configure ", "/configure"})
        EXPECT_FALSE(isMessageType(name)) << name;
}
