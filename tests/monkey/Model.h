#pragma once

#include "platform/Value.h"

#include <QString>
#include <QStringList>

#include <optional>

/// What is known of a station and its calls without looking into the plug-in: the rules that an observer
/// with a pencil would apply.
///
/// Thread: plain values and functions.
namespace monkey {

/// Groups times slots.
struct Shape
{
    QStringList groups;
    QStringList slotNames;

    [[nodiscard]] int systems() const { return static_cast<int>(groups.size() * slotNames.size()); }
    [[nodiscard]] int groupOf(int system) const { return system / static_cast<int>(slotNames.size()); }
};

enum class Function { ShowView, ShowGroupView, GetData, SetLoop, GetLoopConfig, IsLoopFinished };

/// A call as a sequence makes it.
struct Request
{
    Function function = Function::GetLoopConfig;
    platform::Value subject; ///< A system index, a group number, or the number of passes.
    platform::Dictionary config;

    [[nodiscard]] bool shows() const
    {
        return function == Function::ShowView || function == Function::ShowGroupView;
    }
    [[nodiscard]] QString inWords() const;
    /// As plain data, and back.
    [[nodiscard]] platform::Dictionary toData() const;
    [[nodiscard]] static Request fromData(const platform::Dictionary &data);
};

/// What becomes of a call, as far as its arguments settle it.
enum class Fate {
    Returns,    ///< Waits for nobody.
    Throws,     ///< Its subject is no number, or a group that is not there.
    Beyond,     ///< Its system is not there: an error at once.
    CannotDraw, ///< Its columns fit no panel: an error at once.
    Message,    ///< Shows a message once it is its turn, and returns.
    Refused,    ///< Has an error panel acknowledged.
    Asks,       ///< Has a panel answered, unless loop mode has the answer.
};

[[nodiscard]] Fate fateOf(const Request &request, const Shape &shape);
/// The number of the group whose band the call draws in; nothing when it draws nowhere.
[[nodiscard]] std::optional<int> bandOf(const Request &request, Fate fate, const Shape &shape);
/// The key of the panel that the call waits on; empty when there is none.
[[nodiscard]] QString panelKeyOf(const Request &request, Fate fate, const Shape &shape);
/// What tells questions of one panel apart: the kind of panel, what a group's panel asks for, and the labels,
/// whose order is no matter.
[[nodiscard]] QString questionOf(const Request &request);

/// The labels of a list in the configuration, as texts.
[[nodiscard]] QStringList labelsIn(const platform::Dictionary &config, const QString &key);
/// The length that an entry must have; 0 or less when any will do.
[[nodiscard]] qint64 lengthIn(const platform::Dictionary &config);
/// Whether a field takes the text as an entry of that length.
[[nodiscard]] bool fits(const QString &entry, qint64 length);

} // namespace monkey
