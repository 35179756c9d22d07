#include <HttpServerOptions.h>

#include <Config.h>
#include <Singleton.h>

namespace {

int positive(const char *key, int defaultValue)
{
    const int value = Singleton<Config>::instance().intValue(
        QStringLiteral("HttpServer:") + QLatin1String(key), defaultValue);
    return value < 1 ? defaultValue : value;
}

std::chrono::seconds seconds(const char *key, std::chrono::seconds defaultValue)
{
    return std::chrono::seconds(positive(key, static_cast<int>(defaultValue.count())));
}

} // namespace

HttpServerOptions HttpServerOptions::fromConfig()
{
    HttpServerOptions options;
    options.address = Singleton<Config>::instance().stringValue(
        QStringLiteral("HttpServer:address"), options.address);
    options.maxBodyBytes = positive("maxBodyBytes", static_cast<int>(options.maxBodyBytes));
    options.maxHeaderBytes = positive("maxHeaderBytes", static_cast<int>(options.maxHeaderBytes));
    options.maxConnections = positive("maxConnections", options.maxConnections);
    options.idleTimeout = seconds("idleTimeout", options.idleTimeout);
    options.headerTimeout = seconds("headerTimeout", options.headerTimeout);
    options.bodyTimeout = seconds("bodyTimeout", options.bodyTimeout);
    options.answerTimeout = seconds("answerTimeout", options.answerTimeout);
    options.guard =
        Singleton<Config>::instance().boolValue(QStringLiteral("HttpServer:guard"), options.guard);
    return options;
}
