#pragma once

#include "HttpGuard.h"
#include "HttpRefusals.h"
#include "HttpRequestHead.h"

#include <HttpServerOptions.h>

#include <optional>

/// The rules by which a request is refused as soon as its header is complete. A value type.
class HttpAdmission
{
public:
    struct Refusal
    {
        int status;
        HttpRefusals::Kind kind;
        QString why; // for the log
    };

    explicit HttpAdmission(const HttpServerOptions &options);

    /// `header` is what `head` has been read into.
    std::optional<Refusal> refusal(const HttpRequestHead &head, const RequestHeader &header) const;
    Refusal tooLargeBody() const;

private:
    Refusal tooLargeHead(const HttpRequestHead &head) const;

    qint64 m_maxHeaderBytes;
    qint64 m_maxBodyBytes;
    std::optional<HttpGuard> m_guard;
};
