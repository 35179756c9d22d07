#pragma once

#include <Action.h>
#include <EContext.h>
#include <HostExport.h>

#include <functional>

/**
 * A handler that a plug-in wants to run at an action of the cashier. A value type.
 *
 * Thread: the handler runs on the host's main thread.
 */
class HOST_EXPORT ActionTrigger
{
public:
    using Handler = std::function<EContext::Result(const control::Action &)>;

    /// When the handler wants to run. Kept for the handler's description; it filters nothing.
    enum Order : int { BeforeAction = 0, AfterAction = 1 };
    /// Which outcome of the action the handler is for. Kept likewise; it filters nothing.
    enum Result : int { AnyOutcome = 0, Completed = 2 };
    /// Triggers run in ascending priority; equal ones in the order in which they were added.
    enum Priority : int { First = 0, Normal = 3 };

    ActionTrigger(EContext::Code context, control::EActionType action, Order order, Handler handler,
                  Result result, Priority priority);

    /// Whether the trigger is registered for this action; its context Any fits every context.
    bool matches(const control::Action &action) const;
    EContext::Result run(const control::Action &action) const { return m_handler(action); }

    EContext::Code context() const { return m_context; }
    control::EActionType action() const { return m_action; }
    Order order() const { return m_order; }
    Result result() const { return m_result; }
    Priority priority() const { return m_priority; }

private:
    EContext::Code m_context;
    control::EActionType m_action;
    Order m_order;
    Handler m_handler;
    Result m_result;
    Priority m_priority;
};
