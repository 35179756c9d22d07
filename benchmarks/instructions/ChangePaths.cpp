#include "Count.h"
#include "Paths.h"
#include "RunningPlugin.h"

#include <Receipt.h>

namespace {

QSharedPointer<Receipt> receiptOf(int positions)
{
    const auto receipt = QSharedPointer<Receipt>::create(1);
    for (int i = 0; i < positions; ++i) {
        Position position;
        position.code = QString::number(i);
        position.name = QStringLiteral("Молоко");
        position.price = 8990;
        receipt->addPosition(position);
    }
    return receipt;
}

} // namespace

void countChanges(const QString &pluginFile, int repetitions)
{
    RunningPlugin plugin(pluginFile);
    const auto countChange = [&](const char *name, int positions) {
        plugin.setDocument(receiptOf(positions));
        count(
            name, repetitions,
            [&](int) {
                plugin.run({EContext::Sale, control::ReceiptChanged});
            },
            [&] { plugin.settle(); });
    };
    countChange("change to queue, 10 positions", 10);
    countChange("change to queue, 1000 positions", 1000);
}
