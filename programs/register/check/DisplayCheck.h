#pragma once

#include <register/Cashier.h>
#include <register/Commands.h>
#include <register/Till.h>
#include <register/check/CheckResult.h>
#include <register/check/CheckScript.h>
#include <register/check/CheckShop.h>
#include <register/check/DisplayPoster.h>
#include <register/check/MessageTap.h>
#include <register/check/RequestJudge.h>

#include <common/JsonPoster.h>
#include <relay/Relay.h>

#include <QMap>
#include <QObject>
#include <QTcpServer>
#include <QTimer>
#include <QUrl>

#include <optional>

/**
 * Plays every message against somebody's display application and judges it: a register with the
 * real plug-in sells, what the plug-in posts goes on to the display, and what the display asks goes
 * to the plug-in.
 *
 * A message that the display refuses is not repeated, so that each one is tried. The display has to
 * send its requests to `requestPort` of this machine.
 *
 * Owner: main. Thread: the main thread.
 * Errors: the constructor throws UsageError or PluginError; what is wrong with the display is a
 * result. Shut-down: the destructor ends the plug-in.
 */
class DisplayCheck : public QObject
{
    Q_OBJECT

public:
    DisplayCheck(const QUrl &display, int requestPort, const QString &pluginFile);
    ~DisplayCheck() override;

    void start();
    /// Where the display is to send its requests.
    int requestPort() const { return m_requests->port(); }
    /// Whether all was tried, and nothing failed.
    bool hasPassed() const { return m_finished && havePassed(m_results); }
    const CheckResults &results() const { return m_results; }

Q_SIGNALS:
    /// A result is there; told as they come.
    void judged(const CheckResult &result);
    void finished();

private:
    bool isPlaying() const { return m_step < m_script.size(); }
    void reservePluginPort(int requestPort);
    void runStep();
    void takePost(const Post &post);
    void takeStep(const Post &post);
    void takeUnasked(const QString &type, const Post &post);
    void askForPictures();
    void finishWhenAllCame();
    void giveUp();
    void finish();
    void skipTheRest();
    void add(const CheckResult &result);

    CheckShop m_shop;
    MessageTap m_tap;
    DisplayPoster m_poster;
    QTcpServer m_pluginPort;         // keeps it from others until the plug-in takes it
    std::optional<Relay> m_requests; // of the display, to the plug-in
    std::optional<JsonPoster> m_asker;
    Till m_till;
    Cashier m_cashier;
    Commands m_commands;
    const QList<CheckStep> m_script;
    qsizetype m_step = 0;
    QMap<QString, int> m_unasked; // messages that no step led to, by type
    RequestJudge m_judge;
    CheckResults m_results;
    QTimer m_patience;
    QTimer m_stepLimit;
    bool m_isAbsent = false; // nobody listens where the display should
    bool m_finished = false;
};
