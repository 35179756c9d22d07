#pragma once

#include <plugin/ViewConnector.h>

#include <ActionRunner.h>
#include <Receipt.h>

#include <QMap>
#include <QSharedPointer>
#include <QString>

#include <array>
#include <random>

/**
 * A register at which something happens all the time: receipts, dialogs, content, drafts, and a
 * display that asks for pictures and tells how its advertisements went.
 *
 * Owner and thread: the test. What it keeps does not grow with time. Errors and shut-down: none
 * that are its own.
 */
class BusyTill
{
public:
    using Type = view::Message::Type;

    explicit BusyTill(quint32 seed);
    ~BusyTill();
    Q_DISABLE_COPY_MOVE(BusyTill)

    /// Something of any kind happens. Waits for the answer if it is a request of the display.
    void step();
    /// One thing happens of each kind that makes a message.
    void stepOfEachKind();

    /// How often the plug-in queued a message, and the newest of each type.
    qint64 asked() const { return m_plugin.asked; }
    QMap<Type, QVariantMap> newest() const { return m_plugin.newest; }
    /// How many pictures the display asked for; each has the next number from 1.
    int picturesAsked() const { return m_pictures; }

    bool hasNothingToSend() const { return m_plugin.messages->lock()->isEmpty(); }

private:
    class Plugin : public ViewConnector
    {
    public:
        using ViewConnector::messages;
        using ViewConnector::server;

        void addMessage(const view::Message &message) override;

        qint64 asked = 0;
        QMap<Type, QVariantMap> newest;
    };

    using Deed = void (BusyTill::*)();

    void openReceipt();
    void sell();
    void change();
    void showContent();
    void draft();
    void showQr();
    void showPrices();
    void closeDialog();
    void finishAd();
    void askForPicture();

    void notify(int code, const QVariantMap &arguments);
    void send(const QByteArray &request);
    int upTo(int most);
    Position position();

    static const std::array<Deed, 10> deeds;

    std::mt19937 m_random;
    Plugin m_plugin;
    ActionRunner m_runner;
    QSharedPointer<Receipt> m_receipt;
    int m_receipts = 0;
    int m_pictures = 0;
};
