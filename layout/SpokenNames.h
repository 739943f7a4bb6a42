#pragma once

#include "common/AskRules.h"
#include "common/PanelSubject.h"

/// How assistive technology calls panels and what stands on them: a name says also whose it is, since who
/// listens does not see what it stands beside. Thread: any.
namespace interactive::spoken {

/// "slot S1, group G1".
[[nodiscard]] QString whose(const QString &slot, const QString &group);
/// "group G1", or the slot of a panel that is one slot's.
[[nodiscard]] QString whose(const PanelSubject &subject);
/// The panel itself: "Slot S1, group G1".
[[nodiscard]] QString panel(const PanelSubject &subject);
/// A control: "OK, slot S1, group G1".
[[nodiscard]] QString control(const QString &name, const QString &whose);
/// What an entry of the label has to be: the hint, the length where one is asked for, the range of a number.
[[nodiscard]] QString askedFor(const AskRules &rules, const QString &label, qint64 length);

} // namespace interactive::spoken
