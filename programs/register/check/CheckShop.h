#pragma once

#include <register/Goods.h>

#include <HttpServer.h>

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

/**
 * The small shop that a display is checked with: goods, one of them with a picture as large as a
 * camera's, and a server of the advertisements that the plug-in's settings name.
 *
 * Owner: the check. Thread: the main thread. Errors: the constructor throws UsageError if a port or
 * a folder cannot be had. Shut-down: the destructor removes the folder and frees the port.
 */
class CheckShop
{
public:
    /// How long each of the two advertisements is to be shown.
    static constexpr int adSeconds = 1;
    static constexpr int ads = 2;
    /// In the address of the one that cannot be had.
    static constexpr auto missingAd = "missing.png";

    CheckShop();
    Q_DISABLE_COPY_MOVE(CheckShop)

    /// Sets what the plug-in reads: where it posts to, where it listens, and the timetable.
    void configure(const QString &server, int pluginPort) const;

    const Goods &goods() const { return m_goods; }
    QString imagesFolder() const { return m_folder.path(); }

private:
    void answer(const RequestHeader &header);

    const QTemporaryDir m_folder;
    const QByteArray m_advertisement;
    const Goods m_goods;
    HttpServer m_adServer;
};
