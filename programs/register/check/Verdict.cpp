#include <register/check/Verdict.h>

#include <common/MessageTypes.h>
#include <register/check/DisplayPoster.h>

namespace {

constexpr int firstHttpStatus = 100;

struct Words
{
    QString message;
    QString remedy;
};

/// libcurl's errors, by their numbers (CURLcode), which are part of its interface.
Words ofNoAnswer(int error)
{
    switch (error) {
    case 6:
        return {QStringLiteral("the display's name cannot be resolved"),
                QStringLiteral("Give --check an address that this machine knows.")};
    case 7:
        return {QStringLiteral("nobody listens there"),
                QStringLiteral("Start the display, or give --check its address.")};
    case 18:
        return {QStringLiteral("the answer ended before its Content-Length"),
                QStringLiteral("Send as much as is announced, or nothing.")};
    case 23:
        return {QStringLiteral("the answer was longer than 1 MiB"),
                QStringLiteral("Answer with a short body or none: it is not used.")};
    case 28:
        return {QStringLiteral("no whole answer within %1 s").arg(DisplayPoster::timeoutSeconds),
                QStringLiteral("Answer as soon as the message is read, and draw afterwards.")};
    case 42: // the REST client does not let it repeat the post
    case 52:
    case 55:
    case 56:
        return {QStringLiteral("the connection was closed without an answer"),
                QStringLiteral("Answer each POST with a status, also if nothing is to be shown.")};
    default:
        return {QStringLiteral("no HTTP answer (libcurl's error %1)").arg(error),
                QStringLiteral("Answer in HTTP/1.1, with a status line and complete fields.")};
    }
}

Words ofStatus(int status, const QString &path, const QString &type)
{
    const auto message = QStringLiteral("answered %1").arg(status);
    if (status / 100 == 3)
        return {message, QStringLiteral("Serve %1 itself: the plug-in follows nothing.").arg(path)};
    switch (status) {
    case 401:
    case 403:
        return {message, QStringLiteral("Accept requests without credentials, under the address "
                                        "that the plug-in is given.")};
    case 404:
        return {message,
                QStringLiteral("Serve POST %1, in exactly these letters: docs/messages.md lists "
                               "the paths.")
                    .arg(path)};
    case 405:
    case 501:
        return {message, QStringLiteral("Allow the method POST on %1.").arg(path)};
    case 400:
    case 415:
    case 422:
        return {message, QStringLiteral("Accept application/json as docs/protocol/schemas/%1.json "
                                        "describes it, and ignore fields that you do not know.")
                             .arg(type)};
    case 413:
        return {message, QStringLiteral("Accept bodies of some megabytes: pictures and long "
                                        "receipts come whole.")};
    default:
        return {message, QStringLiteral("See the display's log. The plug-in repeats the message "
                                        "until it is accepted, and all less urgent ones wait.")};
    }
}

} // namespace

CheckResult verdictOn(const Post &post, const QString &what)
{
    const auto type = messageTypeOfPath(post.path);
    CheckResult result{type, what, CheckResult::Outcome::Passed, {}, {}};
    if (post.result == 0) {
        result.message = QStringLiteral("accepted in %1 ms").arg(post.ms, 0, 'f', 1);
        return result;
    }
    const auto words = post.result < firstHttpStatus ? ofNoAnswer(post.result)
                                                     : ofStatus(post.result, post.path, type);
    result.outcome = CheckResult::Outcome::Failed;
    result.message = words.message;
    result.remedy = words.remedy;
    return result;
}
