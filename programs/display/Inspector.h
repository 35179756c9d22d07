#pragma once

#include <display/Switches.h>

#include <pages/EventStreams.h>
#include <pages/PageRoutes.h>

#include <QMap>
#include <QObject>

#include <functional>

class Journal;

/**
 * The inspector: a page that follows the journal, and the switches with which somebody tries how
 * the register copes.
 *
 * Owner: the display. Thread: the main thread. Errors: what is no switch, no action, or not
 * possible now is answered 4xx with a text.
 */
class Inspector : public QObject
{
    Q_OBJECT

public:
    /// Something to be done once. Returns why it is not possible now; empty if it was done.
    using Action = std::function<QString()>;

    /// `journal` must live longer.
    Inspector(Journal &journal, const Switches &switches);

    const Switches &switches() const { return m_switches; }
    void addAction(const QString &name, const Action &action) { m_actions.insert(name, action); }

    void addRoutes(PageRoutes &routes);

Q_SIGNALS:
    void switched();

private:
    QByteArray journal() const;
    void takeSwitches(const PageRequest &request);
    void takeAction(const PageRequest &request);
    void takeAsked(const PageRequest &request);

    Journal &m_journal;
    Switches m_switches;
    QMap<QString, Action> m_actions;
    EventStreams m_pages;
};
