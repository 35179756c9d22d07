#pragma once

#include "HttpDaemon.h"

#include <microhttpd.h>

/// What libmicrohttpd calls, on the network thread; `self` is the HttpDaemon.
struct HttpDaemon::Callbacks
{
    static void onConnection(void *self, MHD_Connection *connection, void **exchange,
                             MHD_ConnectionNotificationCode code);
    static void *onUri(void *self, const char *uri, MHD_Connection *connection);
    static MHD_Result onRequest(void *self, MHD_Connection *connection, const char *url,
                                const char *method, const char *version, const char *upload,
                                std::size_t *uploadSize, void **request);
    static void onCompleted(void *self, MHD_Connection *connection, void **request,
                            MHD_RequestTerminationCode reason);
};
