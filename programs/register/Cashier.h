#pragma once

#include <register/CommandFields.h>
#include <register/DialogStack.h>
#include <register/Goods.h>

#include <Receipt.h>

#include <QSharedPointer>
#include <QVariantMap>

class Till;

/**
 * What a cashier does in the sample shop: each deed changes the receipt and runs the register's
 * action, or reports the register's event.
 *
 * Owner: main; the till must outlive it. Thread: the main thread.
 * Errors: every deed throws CommandError if it is not possible now, and then has changed nothing.
 */
class Cashier
{
public:
    Cashier(Till &till, Goods goods);

    void open(const CommandFields &fields);
    void sell(const CommandFields &fields);
    void voidPosition(const CommandFields &fields);
    void discount(const CommandFields &fields);
    void pay(const CommandFields &fields);

    void showQr(const CommandFields &fields);
    void showPrices(const CommandFields &fields);
    void scroll(const CommandFields &fields);
    void draft(const CommandFields &fields);
    void content(const CommandFields &fields);
    void closeDialog(const CommandFields &fields);

    /// Those that are open; the kinds are "qr" and "prices".
    const QList<DialogStack::Dialog> &dialogs() const { return m_dialogs.all(); }

private:
    QSharedPointer<Receipt> openReceipt() const;
    const GoodsItem &goods(const QJsonValue &code) const;
    void notify(int code, const QVariantMap &arguments) const;

    Till &m_till;
    const Goods m_goods;
    DialogStack m_dialogs;
    int m_lastReceipt = 0;
};
