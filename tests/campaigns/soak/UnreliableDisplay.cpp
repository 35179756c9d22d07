#include "UnreliableDisplay.h"

#include <support/Json.h>

void UnreliableDisplay::follow()
{
    noteArrivals();
    if (!m_sinceChange.isValid())
        m_sinceChange.start();
    if (m_sinceChange.elapsed() < m_period.count())
        return;
    m_sinceChange.restart();
    constexpr int states = 4;
    enter(static_cast<State>((static_cast<int>(m_state) + 1) % states));
}

void UnreliableDisplay::recover()
{
    if (m_state == State::Refusing || m_state == State::Swallowing)
        enter(State::Reachable);
}

void UnreliableDisplay::enter(State state)
{
    m_state = state;
    switch (state) {
    case State::Refusing:
        ++m_outages;
        m_proxy.goDown();
        m_server.goDown(); // so that the threads of its connections have ended
        m_server.comeUp();
        break;
    case State::Swallowing:
        ++m_outages;
        m_proxy.strike(support::FaultProxy::Fault::Swallow);
        break;
    case State::Reachable:
    case State::ReachableAgain:
        m_proxy.heal();
        m_proxy.comeUp();
        break;
    }
}

void UnreliableDisplay::noteArrivals()
{
    for (const auto &request : m_server.takeRequests()) {
        ++m_arrived;
        m_latest.insert(request.path, request.body);
        if (request.path == "/image")
            notePicture(request.body);
    }
}

void UnreliableDisplay::notePicture(const QByteArray &body)
{
    const int number = support::json(body)["id"].toObject()["value"].toString().toInt();
    const bool isNext = number == m_lastPicture || number == m_lastPicture + 1;
    m_lastPicture = isNext && m_lastPicture >= 0 ? number : -1;
}
