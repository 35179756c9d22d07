// An exchange that is recorded: its path on the first line, then two bodies, of which the first is
// a line.

#include "support/Fuzz.h"

#include <record/ExchangeLine.h>

#include <QJsonDocument>

void fuzzOne(const QByteArray &input)
{
    const auto fields = fuzz::fields(input, 3);
    Exchange exchange;
    exchange.method = "POST";
    exchange.path = QString::fromUtf8(fields[0]);
    exchange.requestBody = fields[1];
    exchange.status = 200;
    exchange.answerBody = fields[2];
    for (const bool redacts : {false, true}) {
        const auto line = exchangeLine({.number = 1}, exchange, redacts);
        fuzz::require(line.count('\n') == 1 && line.endsWith('\n') &&
                          QJsonDocument::fromJson(line).isObject(),
                      "an exchange is one line of JSON");
    }
}
