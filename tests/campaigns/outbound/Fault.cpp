#include "Fault.h"

#include "Outage.h"
#include "OwnAuthority.h"

#include <utility>

namespace {

using namespace std::chrono_literals;
using support::FaultProxy;
using support::ScriptedAnswer;
using support::TlsIdentity;

constexpr qint64 gigabyte = 1'000'000'000;
constexpr qsizetype headerBytes = 24'000'000;

Fault answered(const char *name, const ScriptedAnswer &answer)
{
    return {name, true, [answer](Outage &outage) { outage.display.answer(answer); }, false};
}

Fault onTheWay(const char *name, FaultProxy::Fault fault)
{
    return {name, false, [fault](Outage &outage) { outage.proxy.strike(fault); }, false};
}

Fault certified(const char *name, TlsIdentity identity)
{
    return {name, false,
            [identity = std::move(identity)](Outage &outage) {
                outage.proxy.present(identity);
                outage.useTls();
            },
            false};
}

Fault lasting(Fault fault)
{
    fault.lastsUntilTimeOut = true;
    return fault;
}

} // namespace

Fault Fault::refusal()
{
    return {"Refused", false, [](Outage &outage) { outage.proxy.goDown(); }, false};
}

std::vector<Fault> Fault::all()
{
    return {
        refusal(),
        lasting(onTheWay("Swallowed", FaultProxy::Fault::Swallow)),
        onTheWay("ResetMidUpload", FaultProxy::Fault::Reset),
        {"NameLookupHangs", false, [](Outage &outage) { outage.hangNameLookup(); }, true},
        certified("CertificateExpired", TlsIdentity::expired(ownAuthority())),
        certified("CertificateOfAnotherHost", TlsIdentity::ofAnotherHost(ownAuthority())),
        certified("CertificateSelfSigned", TlsIdentity::selfSigned()),
        lasting(answered("NeverAnswered", ScriptedAnswer::blackHole())),
        answered("ClosedAfterRequest", ScriptedAnswer::closed()),
        answered("HeaderNeverEnds", ScriptedAnswer::endlessHeader()),
        answered("HeaderOf24Megabytes", ScriptedAnswer::largeHeader(headerBytes)),
        lasting(answered("HeaderDrips", ScriptedAnswer::drippingHeader(500ms))),
        lasting(answered("BodyDrips", ScriptedAnswer::dripping(500ms))),
        answered("BodyOf1Gigabyte", ScriptedAnswer::largeBody(gigabyte)),
        answered("BodyNeverEnds", ScriptedAnswer::endlessBody()),
        answered("BodyTruncated", ScriptedAnswer::truncated()),
        answered("Garbage", ScriptedAnswer::garbage()),
        answered("VersionMissing", {.bytes = "HTTP/x 500 Bad\r\nContent-Length: 0\r\n\r\n"}),
        answered("InterimFlood", ScriptedAnswer::endlessInterim(0ms)),
        lasting(answered("InterimDrips", ScriptedAnswer::endlessInterim(500ms))),
        answered("Status301", ScriptedAnswer::status(301)),
        answered("Status302", ScriptedAnswer::status(302)),
        answered("Status307", ScriptedAnswer::status(307)),
        answered("Status400", ScriptedAnswer::status(400)),
        answered("Status404", ScriptedAnswer::status(404)),
        answered("Status500", ScriptedAnswer::status(500)),
        answered("Status503", ScriptedAnswer::status(503)),
    };
}

std::ostream &operator<<(std::ostream &out, const Fault &fault)
{
    return out << fault.name;
}
