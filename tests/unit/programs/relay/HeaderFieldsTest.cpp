#include <relay/HeaderFields.h>

#include <gtest/gtest.h>

TEST(HeaderFields, Of_one_hop_or_made_anew_by_each_sender_are_left_out)
{
    BasicHeader header;
    header.addValue("Accept", "a");
    header.addValue("connection", "keep-alive, X-Named");
    header.addValue("x-named", "1");
    header.addValue("Keep-Alive", "1");
    header.addValue("Transfer-Encoding", "chunked");
    header.addValue("Content-Length", "7");
    header.addValue("Host", "localhost");
    header.addValue("Date", "now");
    header.addValue("Accept", "b");
    const QList<BasicHeader::Field> expected{{"Accept", "a"}, {"Accept", "b"}};
    EXPECT_EQ(endToEndFields(header), expected);
}
