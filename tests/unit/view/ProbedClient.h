#pragma once

#include <view/Client.h>

#include <QTimer>

/// A client whose members the tests may look at.
class ProbedClient : public view::Client
{
public:
    using Client::headers;
    using Client::logger;
    using Client::messages;
    using Client::restClient;
    using Client::serverAddress;
    using Client::timer;
};
