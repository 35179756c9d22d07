#pragma once

#include <display/LastMessages.h>
#include <display/LookFile.h>
#include <display/StateFile.h>

#include <pages/EventStreams.h>
#include <pages/PageRoutes.h>

#include <QObject>

class Advertising;

/**
 * The customer's screen: a page that follows the messages, and what it needs besides: the QR code,
 * the pictures of its style and the present advertisement.
 *
 * Owner: the display. Thread: the main thread. Errors: as StateFile and EventStreams.
 */
class CustomerScreen : public QObject
{
    Q_OBJECT

public:
    /// Takes up the state that `stateFile` holds; see StateFile. `advertising` must live longer.
    CustomerScreen(const QString &stateFile, Advertising &advertising);

    /// The messages of an earlier run that still matter.
    const QList<KeptMessage> &messages() const { return m_messages.all(); }

    void show(const QString &type, const QJsonObject &body);
    /// Forgets everything, as if the display were new.
    void clear();

    void addRoutes(PageRoutes &routes);

private:
    QJsonObject state() const;
    QJsonObject advertisement() const;
    void readLook();
    void answerQr(const PageRequest &request) const;
    void answerAd(const PageRequest &request) const;
    void takeFailedAd(const PageRequest &request);

    Advertising &m_advertising;
    StateFile m_file;
    LastMessages m_messages;
    int m_lastNumber = 0;
    LookFile m_logo;
    LookFile m_background;
    EventStreams m_pages;
};
