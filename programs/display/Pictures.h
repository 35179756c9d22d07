#pragma once

#include <QJsonObject>
#include <QSet>
#include <QString>

/**
 * The pictures of the goods on the receipt: which are to be asked for, and which have come.
 *
 * Each picture is asked for once a receipt, since the plug-in sends it again by itself when it
 * changes, but only for as long as that receipt is the current one.
 *
 * Owner: the display. Thread: the main thread. Errors: what is no receipt asks for nothing. A value
 * type.
 */
class Pictures
{
public:
    /// The request for the picture of goods.
    static QJsonObject requestForGoods(const QString &code, const QString &barcode);

    /// Takes the settings of the register: without "showImages" nothing is asked for.
    void configure(const QJsonObject &settings);

    /// The requests for the pictures of a receipt that were not yet asked for.
    QList<QJsonObject> requestsFor(const QJsonObject &receipt);
    /// A request did not reach the plug-in: with the next change it is made again.
    void giveUp(const QJsonObject &request);
    /// Takes a picture that has come.
    void receive(const QJsonObject &message);

    int requested() const { return m_requested; }
    /// How many messages with a picture have come, renewed ones among them.
    int delivered() const { return m_delivered; }
    /// How many messages have come that say that there is no picture.
    int missing() const { return m_missing; }

private:
    bool m_shown = true;
    QJsonValue m_receiptNumber;
    QSet<QString> m_asked; // codes of goods
    int m_requested = 0;
    int m_delivered = 0;
    int m_missing = 0;
};
