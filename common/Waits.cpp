#include "common/Waits.h"

#include "common/Log.h"
#include "common/Messages.h"
#include "common/Selectors.h"

namespace interactive {

using platform::Condition;
using platform::Identifier;

namespace {

QString describe(const std::shared_ptr<Condition> &condition)
{
    return condition
               ? QStringLiteral("<Condition: 0x%1>")
                     .arg(reinterpret_cast<quintptr>(condition.get()), 0, 16) // NOLINT: an address to show
               : QStringLiteral("(null)");
}

Waits::Wake wakeOf(Condition::Wake wake)
{
    switch (wake) {
    case Condition::Wake::Signalled:
        return Waits::Wake::Pressed;
    case Condition::Wake::Asked:
        return Waits::Wake::Asked;
    case Condition::Wake::TimedOut:
        return Waits::Wake::TimedOut;
    default:
        return Waits::Wake::Interrupted;
    }
}

} // namespace

Waits::Wait::Wait(Waits &waits, const Identifier &panelKey, Purpose purpose)
    : m_waits(waits)
    , m_panelKey(panelKey)
    , m_condition(waits.conditionMade(panelKey))
    , m_place(*m_condition)
{
    // By key and not by place: at most one call waits on a panel key, since calls take turns.
    m_waits.m_purposes.lock()->insert(m_panelKey.text(), purpose);
}

Waits::Wait::~Wait()
{
    m_waits.m_purposes.lock()->remove(m_panelKey.text());
}

Waits::Wake Waits::Wait::wait()
{
    return wakeOf(m_place.wait());
}

Waits::Wake Waits::Wait::end()
{
    return wakeOf(m_place.end());
}

bool Waits::Press::isOpen() const
{
    // Without a condition at the press no call had announced a panel: there was nothing to be answered.
    return !m_condition || m_condition->accepts(m_ticket);
}

bool Waits::Press::end() const
{
    return m_condition && m_condition->signal(m_ticket);
}

Identifier Waits::panelKey(const QString &text)
{
    const auto keys = m_panelKeys.lock();
    // Never taken out again: an instance that was handed out must stay the one that its text leads to.
    auto found = keys->find(text);
    if (found == keys->end())
        found = keys->insert(text, Identifier(text));
    return *found;
}

std::shared_ptr<Condition> Waits::getCondition(const Identifier &key)
{
    std::shared_ptr<Condition> found;
    bool any = false;
    {
        const auto conditions = m_conditions.lock();
        any = !conditions->isEmpty();
        found = conditions->value(key.text());
    }
    // From here on without the lock: to make log lines takes time, and the log has locks of its own.
    const QString method = selectors::bracketed(selectors::GetCondition);
    // No condition at all means that no view was loaded; that one key has none is usual.
    if (!any) {
        log::error(messages::NoCondition, {method, key});
        return nullptr;
    }
    log::debug(messages::FoundCondition, {method, key, platform::integerValue(key.text()), describe(found)});
    return found;
}

std::shared_ptr<Condition> Waits::conditionMade(const Identifier &key)
{
    if (auto found = getCondition(key))
        return found;
    // Another call for the same key may have made it since: both must wait on one condition.
    const auto conditions = m_conditions.lock();
    std::shared_ptr<Condition> &condition = (*conditions)[key.text()];
    if (!condition)
        condition = std::make_shared<Condition>();
    return condition;
}

void Waits::makeCondition(const Identifier &key)
{
    m_conditions.lock()->insert(key.text(), std::make_shared<Condition>());
}

void Waits::clear()
{
    m_conditions.lock()->clear();
}

std::shared_ptr<Condition> Waits::find(const QString &key)
{
    return m_conditions.lock()->value(key);
}

Waits::Press Waits::press(const Identifier &key)
{
    Press press;
    press.m_condition = find(key.text());
    // Of this very moment: a place that is taken after the press was not what somebody pressed for.
    if (press.m_condition)
        press.m_ticket = press.m_condition->ticket();
    press.m_purpose = m_purposes.lock()->value(key.text(), Purpose::Answer);
    return press;
}

bool Waits::isWaited(const QString &key)
{
    return m_purposes.lock()->contains(key);
}

bool Waits::isAnswered(const Identifier &key)
{
    const std::shared_ptr<Condition> condition = find(key.text());
    // A ticket that is made now and refused now: places are taken, and each has had its signal.
    return condition && !condition->accepts(condition->ticket());
}

void Waits::ask(const QString &key)
{
    if (const std::shared_ptr<Condition> condition = find(key))
        condition->ask();
}

bool Waits::endOverdue(const QString &key)
{
    const std::shared_ptr<Condition> condition = find(key);
    return condition && condition->endOverdue();
}

Waits::Kept Waits::kept()
{
    // One lock at a time.
    Kept kept;
    kept.panelKeys = m_panelKeys.lock()->size();
    kept.conditions = m_conditions.lock()->size();
    kept.waits = m_purposes.lock()->size();
    kept.turns = m_turns.count();
    return kept;
}

void Waits::interrupt()
{
    // The flag first. A call that takes its place after this sees the flag before it waits; one that has
    // taken it before is woken below. None is missed between the two.
    m_interrupted = true;
    m_turns.interrupt();
    // A copy, so that no lock of a condition is taken under that of the table.
    const Conditions conditions = m_conditions.copy();
    for (const std::shared_ptr<Condition> &condition : conditions)
        condition->interruptAll();
}

void Waits::accept()
{
    m_interrupted = false;
    m_turns.accept();
}

} // namespace interactive
