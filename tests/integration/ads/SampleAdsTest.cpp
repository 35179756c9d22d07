#include "AdServiceProcess.h"

#include <support/RawClient.h>

#include <QDir>
#include <QXmlStreamReader>

#include <gmock/gmock.h>

namespace {

constexpr qsizetype maxAdBytes = 6144;

/// The attributes of an SVG file's root; empty unless all of it is well-formed.
QXmlStreamAttributes rootOf(const QByteArray &svg)
{
    QXmlStreamReader reader(svg);
    QXmlStreamAttributes root;
    if (reader.readNextStartElement() && reader.name() == u"svg")
        root = reader.attributes();
    while (!reader.atEnd())
        reader.readNext();
    return reader.hasError() ? QXmlStreamAttributes() : root;
}

} // namespace

TEST(SampleAds, Are_small_pictures_that_the_service_serves)
{
    const AdServiceProcess service({"--ads", SAMPLE_ADS});
    const auto names = QDir(SAMPLE_ADS).entryList(QDir::Files);
    EXPECT_EQ(names, (QStringList{"bread.svg", "coffee.svg", "fruit.svg"}));
    for (const auto &name : names) {
        SCOPED_TRACE(name.toStdString());
        support::RawClient client(service.port());
        client.send("GET /ads/" + name.toUtf8() + " HTTP/1.1\r\nHost: localhost\r\n\r\n");
        const auto answer = client.answer();
        EXPECT_EQ(answer.status, 200);
        EXPECT_TRUE(answer.header.contains("\r\nContent-Type: image/svg+xml\r\n"))
            << answer.header.toStdString();
        EXPECT_LT(answer.body.size(), maxAdBytes);
        const auto root = rootOf(answer.body);
        EXPECT_EQ(root.value("viewBox"), u"0 0 1280 720");
    }
}
