// Advertisements and pictures, with the register, the display and the ad service as processes: the
// display's results alone make the advertisements change.

#include "ProgramFixture.h"

#include <support/OwnLoopback.h>

#include <csignal>

namespace {

/// A picture of one pixel.
const QByteArray png = QByteArray::fromBase64(
    "iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAIAAACQd1PeAAAADElEQVR4nGP4z8AAAAMBAQDJ/pLvAAAAAElFTkSuQmCC");

class Advertising : public ProgramFixture
{
protected:
    Advertising()
    {
        pluginUrl = "http://" + support::ownLoopbackAddress() + ":38081";
        write("a.png", png);
        write("b.png", png);
    }

    /// Settings with two advertisements of a second each, and others if the test wants them.
    QString settings(const QByteArray &more = {}) const
    {
        const QByteArray folderUrl = "file://" + folder.path().toUtf8() + "/";
        return write("shop.toml",
                     "[HttpServer]\nguard = true\naddress = \"" +
                         support::ownLoopbackAddress().toUtf8() +
                         "\"\n[View.Style]\nshowImages = true\n[ViewConnector]\ninterval = "
                         "20\nserver = \"http://127.0.0.1:" +
                         QByteArray::number(displayPort) +
                         "\"\n[View.ADTimetable.a]\nindex = 1\ntime = 1\nurl = \"" + folderUrl +
                         "a.png\"\n[View.ADTimetable.b]\nindex = 2\ntime = 1\nurl = \"" +
                         folderUrl + "b.png\"\n" + more);
    }

    QByteArray serviceSettings() const
    {
        return "[ViewConnector.Ads]\nurl = \"http://127.0.0.1:" + QByteArray::number(servicePort) +
               "/\"\n";
    }

    /// An ad service that listens; its address is in its first line.
    ProcessPtr startService(const QStringList &arguments)
    {
        auto service = std::make_unique<Process>(QStringLiteral(AD_SERVICE),
                                                 QStringList{"--port", "0"} + arguments);
        EXPECT_TRUE(service->waitForOutputLines(1)) << service->errors().toStdString();
        const QRegularExpression address("http://127.0.0.1:(\\d+)");
        servicePort = address.match(QString(service->outputLines().value(0))).captured(1).toInt();
        EXPECT_NE(servicePort, 0);
        return service;
    }

    static ProcessPtr startRegister(const QString &configFile)
    {
        return ProgramFixture::startRegister({"--config", configFile, "--commands", "-"});
    }

    /// What the display was told to show so far: names in the settings, "stream" for a stream.
    QStringList shown() const
    {
        QStringList names;
        for (const auto &message : record()) {
            if (message["path"].toString() == "/showAD")
                names.append(message["body"]["id"].toString("stream"));
        }
        return names;
    }

    bool waitForShown(const QStringList &names) const
    {
        return support::waitFor([&] { return shown().size() >= names.size(); },
                                std::chrono::seconds(20)) &&
               shown().mid(0, names.size()) == names;
    }

    int servicePort = 0;
};

} // namespace

TEST_F(Advertising, The_timetable_is_played_in_turn_by_itself)
{
    const auto display = startDisplay();
    const auto cashRegister = startRegister(settings());
    EXPECT_TRUE(waitForShown({"a", "b", "a", "b"})) << shown().join(' ').toStdString();
}

TEST_F(Advertising, One_that_cannot_be_loaded_is_taken_out)
{
    const auto display = startDisplay();
    const auto cashRegister = startRegister(
        settings("[View.ADTimetable.broken]\nindex = 0\nurl = \"file:///nothing\"\n"));
    EXPECT_TRUE(waitForShown({"broken", "a", "b", "a", "b"})) << shown().join(' ').toStdString();
}

TEST_F(Advertising, A_stream_takes_over_and_when_it_ends_the_timetable_is_played_from_its_first)
{
    const auto display = startDisplay();
    const auto service = startService({"--answer-after", "1500", "--stream-seconds", "1"});
    const auto cashRegister = startRegister(settings(serviceSettings()));
    EXPECT_TRUE(waitForShown({"a", "b", "stream", "a", "b"})) << shown().join(' ').toStdString();
    display->signal(SIGTERM);
    EXPECT_EQ(display->exitCode(), 0);
    const QRegularExpression pictures("(\\d+) pictures of streams");
    const auto count = pictures.match(QString::fromUtf8(display->output())).captured(1).toInt();
    EXPECT_GE(count, 2) << display->output().toStdString();
}

TEST_F(Advertising, A_stream_whose_service_dies_gives_way_to_the_timetable)
{
    const auto display = startDisplay();
    const auto service = startService({});
    const auto cashRegister = startRegister(settings(serviceSettings()));
    ASSERT_TRUE(support::waitFor([&] { return shown().contains("stream"); }));
    ASSERT_TRUE(service->waitForOutputLines(2)); // the stream has started
    service->signal(SIGKILL);
    EXPECT_TRUE(support::waitFor([&] { return shown().endsWith("b"); }));
    EXPECT_EQ(shown().mid(shown().indexOf("stream")), (QStringList{"stream", "a", "b"}));
}

TEST_F(Advertising, A_stream_whose_key_is_refused_gives_way_to_the_timetable_at_once)
{
    const auto display = startDisplay();
    const auto service = startService({"--fault", "wrong-key"});
    const auto cashRegister = startRegister(settings(serviceSettings()));
    ASSERT_TRUE(support::waitFor([&] { return shown().endsWith("b"); }));
    EXPECT_EQ(shown().mid(shown().indexOf("stream")), (QStringList{"stream", "a", "b"}));
    EXPECT_TRUE(display->output().contains("Forbidden")) << display->output().toStdString();
}

struct Fault
{
    const char *name;
    QByteArrayList lines;
};

void PrintTo(const Fault &fault, std::ostream *out)
{
    *out << fault.name;
}

class FaultyAdService : public Advertising, public testing::WithParamInterface<Fault>
{
};

TEST_P(FaultyAdService, Costs_a_line_or_two_in_the_log_and_the_timetable_goes_on)
{
    const auto display = startDisplay();
    const auto service = startService({"--fault", GetParam().name});
    const auto cashRegister = startRegister(settings(serviceSettings()));
    EXPECT_TRUE(waitForShown({"a", "b"})) << shown().join(' ').toStdString();
    EXPECT_TRUE(support::waitFor(
        [&] { return cashRegister->errors().count(" ERROR ") >= GetParam().lines.size(); }));
    const QByteArray log = cashRegister->errors();
    EXPECT_EQ(log.count(" ERROR "), GetParam().lines.size()) << log.toStdString();
    qsizetype from = 0;
    for (const auto &line : GetParam().lines) {
        const auto found = log.indexOf(" ERROR viewconnector " + line, from);
        EXPECT_GE(found, 0) << log.toStdString();
        from = found;
    }
}

const QByteArray connectionError = "Ошибка подключения к сервису Ads: ";
const QByteArray emptyAnswer = "Пустой ответ от сервера";
const QByteArray wrongAnswer = "Неверный ответ от сервера";
const QByteArray decodingError = "Ошибка декодирования ответа от сервера: ";

INSTANTIATE_TEST_SUITE_P(
    Faults, FaultyAdService,
    testing::Values(Fault{"refuse", {connectionError, emptyAnswer}},
                    Fault{"status", {connectionError, emptyAnswer}},
                    Fault{"endless", {connectionError, emptyAnswer}}, Fault{"empty", {emptyAnswer}},
                    Fault{"short-tag", {wrongAnswer}}, Fault{"iv-12", {wrongAnswer}},
                    Fault{"foreign-curve", {wrongAnswer}}, Fault{"explicit-curve", {wrongAnswer}},
                    Fault{"bad-key", {wrongAnswer}}, Fault{"tampered", {decodingError}},
                    Fault{"not-json", {decodingError}}, Fault{"no-answer", {}}));

TEST_F(Advertising, A_vector_of_20_bytes_is_as_good_as_one_of_16)
{
    const auto display = startDisplay();
    const auto service = startService({"--fault", "iv-20", "--stream-seconds", "1"});
    const auto cashRegister = startRegister(settings(serviceSettings()));
    EXPECT_TRUE(support::waitFor([&] { return shown().contains("stream"); }));
}

TEST_F(Advertising, The_pictures_of_the_goods_on_the_receipt_are_asked_for_and_come)
{
    const auto display = startDisplay();
    const auto cashRegister = ProgramFixture::startRegister(
        {"--config", settings(), "--commands", "-", "--images", folder.path()});
    cashRegister->write(R"({"do":"image","id":{"type":"GoodsCode","value":"100"},"file":"a.png"}
{"do":"image","id":{"type":"Barcode","value":"4601"},"file":"b.png"}
{"do":"document","properties":{"number":1,"positions":[{"code":"100","barcode":"4600"},{"code":"101","barcode":"4601"},{"code":"102","barcode":"4602"}]}}
)");
    QMap<QString, QString> uris;
    EXPECT_TRUE(support::waitFor([&] {
        for (const auto &message : record()) {
            if (message["path"].toString() == "/image")
                uris[message["body"]["id"]["value"].toString()] = message["body"]["uri"].toString();
        }
        return uris.size() == 3;
    }));
    EXPECT_EQ(uris["100"], "data:image/png;base64," + QString::fromLatin1(png.toBase64()));
    EXPECT_EQ(uris["101"], uris["100"]) << "that of the bar code";
    EXPECT_EQ(uris["102"], "") << "an unknown one is answered too";
}
