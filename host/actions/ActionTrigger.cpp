#include <ActionTrigger.h>

#include <utility>

ActionTrigger::ActionTrigger(EContext::Code context, control::EActionType action, Order order,
                             Handler handler, Result result, Priority priority)
    : m_context(context)
    , m_action(action)
    , m_order(order)
    , m_handler(std::move(handler))
    , m_result(result)
    , m_priority(priority)
{
}

bool ActionTrigger::matches(const control::Action &action) const
{
    return m_action == action.type && (m_context == EContext::Any || m_context == action.context);
}
