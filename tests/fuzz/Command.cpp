// Lines of a register's script, each a command, from a fresh till on.

#include "support/Fuzz.h"

#include <register/Cashier.h>
#include <register/CashierCommands.h>
#include <register/CommandError.h>
#include <register/CommandRunner.h>
#include <register/HostCommands.h>
#include <register/Till.h>

#include <support/FreshSingletons.h>

#include <cstdio>

void fuzzOne(const QByteArray &input)
{
    static const auto *const quiet = std::freopen("/dev/null", "w", stdout); // the answers
    fuzz::require(quiet != nullptr, "answers can be dropped");
    static const auto goods = Goods::fromFile(QStringLiteral(GOODS));

    const support::FreshSingletons host;
    Till till{QStringLiteral(RECORDING_PLUGIN)};
    Cashier cashier(till, goods);
    Commands commands;
    addHostCommands(commands, till, QString());
    addCashierCommands(commands, cashier);
    CommandRunner runner(commands);
    const auto lines = input.split('\n');
    for (const auto &line : lines) {
        const auto answer = runner.run(line, CommandRunner::Source::Script);
        fuzz::require(!answer.toLine().isEmpty() && answer.toLine().endsWith('\n'),
                      "every command is answered with a line");
        till.documentAsSent();
    }
}
