#include "PageServerFixture.h"

#include <pages/PageAnswers.h>

#include <support/PrintQt.h>

#include <QFile>

namespace {

using PageRoutesTest = PageServerFixture;

} // namespace

TEST_F(PageRoutesTest, Hand_a_request_with_its_query_and_content_to_the_handler_of_its_path)
{
    QList<QByteArray> seen;
    routes.add("POST", "/do it", [&](const PageRequest &request) {
        seen = {request.path.toUtf8(), request.query.queryItemValue("n").toUtf8(), request.content};
        answerDone(request.server);
    });
    EXPECT_EQ(ask("POST", "/do%20it?n=7&m=1").status, 204);
    EXPECT_EQ(seen, (QList<QByteArray>{"/do it", "7", "body"}));
}

TEST_F(PageRoutesTest, Refuse_an_unknown_path_and_another_method)
{
    routes.add("POST", "/switches", [](const PageRequest &request) { answerDone(request.server); });
    const auto unknown = ask("GET", "/nothing");
    EXPECT_EQ(unknown.status, 404);
    EXPECT_EQ(unknown.body, "there is no page at /nothing\n");
    const auto otherMethod = ask("GET", "/switches");
    EXPECT_EQ(otherMethod.status, 405);
    EXPECT_EQ(otherMethod.body, "/switches takes POST\n");
    EXPECT_TRUE(otherMethod.header.contains("\r\nAllow: POST\r\n"));
}

TEST_F(PageRoutesTest, Know_their_paths_whatever_the_method_and_the_query)
{
    routes.add("POST", "/switches", [](const PageRequest &request) { answerDone(request.server); });
    EXPECT_TRUE(routes.has({"GET", "/switches?a=b"}));
    EXPECT_FALSE(routes.has({"POST", "/switches/"}));
    EXPECT_FALSE(routes.has({"POST", "*"}));
}

TEST_F(PageRoutesTest, Serve_the_shared_files_with_their_types)
{
    const auto script = ask("GET", "/common/live.js");
    EXPECT_EQ(script.status, 200);
    EXPECT_TRUE(script.header.contains("Content-Type: text/javascript; charset=utf-8"));
    QFile source(QStringLiteral(SOURCE) + "/programs/pages/web/live.js");
    ASSERT_TRUE(source.open(QIODevice::ReadOnly));
    EXPECT_EQ(script.body, source.readAll());
    EXPECT_TRUE(ask("GET", "/favicon.ico").header.contains("Content-Type: image/svg+xml"));
}

TEST_F(PageRoutesTest, Serve_no_file_by_a_way_around)
{
    for (const auto *target : {"/common/../common/live.js", "/common/", "/common/%2e%2e/live.js",
                               "/common/..%2fcommon%2flive.js", "//common/live.js"})
        EXPECT_EQ(ask("GET", target).status, 404) << target;
}

TEST_F(PageRoutesTest, Keep_the_browser_from_running_or_loading_anything_else)
{
    const auto answer = ask("GET", "/common/live.js");
    EXPECT_TRUE(answer.header.contains("Content-Security-Policy: default-src 'none'; "
                                       "script-src 'self'; style-src 'self'; "));
    EXPECT_TRUE(answer.header.contains("X-Content-Type-Options: nosniff"));
    EXPECT_TRUE(answer.header.contains("Cache-Control: no-store"));
    EXPECT_TRUE(ask("GET", "/nothing").header.contains("Content-Security-Policy: "));
}
