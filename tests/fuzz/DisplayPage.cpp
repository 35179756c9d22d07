// A request of the display's pages: method and target on the first line, the body behind it.

#include "support/Fuzz.h"

#include <display/Inspector.h>
#include <display/Journal.h>

#include <pages/PageRoutes.h>

void fuzzOne(const QByteArray &input)
{
    static HttpServer server(0, HttpServerOptions()); // whose answers nobody waits for
    static Journal journal;
    static Inspector inspector(journal, {});
    static PageRoutes routes;
    if (!routes.has(RequestHeader(QStringLiteral("POST"), QStringLiteral("/asked")))) {
        inspector.addAction(QStringLiteral("clear"), [] { return QString(); });
        inspector.addRoutes(routes);
    }
    const auto fields = fuzz::fields(input, 2);
    const auto line = QString::fromUtf8(fields[0]);
    routes.serve(server, RequestHeader(line.section(u' ', 0, 0), line.section(u' ', 1)), fields[1]);

    const auto slowMs = inspector.switches().slowMs;
    fuzz::require(slowMs >= 0 && slowMs <= maxSlowMs, "a display is slow within its limits");
}
