#include <register/CashierCommands.h>

#include <register/Cashier.h>
#include <register/Commands.h>

namespace {

struct Deed
{
    const char *name;
    void (Cashier::*function)(const CommandFields &);
};

constexpr Deed deeds[] = {
    {"open", &Cashier::open},
    {"sell", &Cashier::sell},
    {"void", &Cashier::voidPosition},
    {"discount", &Cashier::discount},
    {"pay", &Cashier::pay},
    {"qr", &Cashier::showQr},
    {"prices", &Cashier::showPrices},
    {"scroll", &Cashier::scroll},
    {"draft", &Cashier::draft},
    {"content", &Cashier::content},
    {"close-dialog", &Cashier::closeDialog},
};

} // namespace

void addCashierCommands(Commands &commands, Cashier &cashier)
{
    for (const auto &deed : deeds)
        commands.add(QString::fromLatin1(deed.name),
                     [&cashier, function = deed.function](const QJsonObject &command) {
                         (cashier.*function)(CommandFields(command));
                     });
}
