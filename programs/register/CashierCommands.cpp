#include <register/CashierCommands.h>

#include <register/Cashier.h>
#include <register/Commands.h>

#include <array>

namespace {

struct Deed
{
    const char *name;
    void (Cashier::*function)(const CommandFields &);
};

constexpr std::array deeds{
    Deed{"open", &Cashier::open},
    Deed{"sell", &Cashier::sell},
    Deed{"void", &Cashier::voidPosition},
    Deed{"discount", &Cashier::discount},
    Deed{"pay", &Cashier::pay},
    Deed{"qr", &Cashier::showQr},
    Deed{"prices", &Cashier::showPrices},
    Deed{"scroll", &Cashier::scroll},
    Deed{"draft", &Cashier::draft},
    Deed{"content", &Cashier::content},
    Deed{"close-dialog", &Cashier::closeDialog},
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
