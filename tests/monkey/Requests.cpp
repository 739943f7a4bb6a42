#include "tests/monkey/Requests.h"

#include "tests/monkey/CaseFile.h"

#include <QList>

#include <algorithm>

using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace monkey {
namespace {

constexpr int MostGroups = 3;
constexpr int MostSlots = 6;

Value randomSystem(Dice &dice, const Shape &shape)
{
    const QList<Value> wrong{99, -1, shape.systems(), "1", 0.5, true, Array{0}};
    return dice.oneIn(20) ? dice.pick(wrong) : Value(dice.below(shape.systems()));
}

Value randomGroup(Dice &dice, const Shape &shape)
{
    const QList<Value> wrong{shape.groups.size(), -1, "G1", 1.5};
    return dice.oneIn(20) ? dice.pick(wrong) : Value(dice.below(shape.groups.size()));
}

Array randomSlots(Dice &dice, const Shape &shape)
{
    Array wanted;
    for (const QString &slot : shape.slotNames) {
        if (!dice.oneIn(3))
            wanted.insert(dice.below(wanted.size() + 1), slot);
    }
    if (wanted.isEmpty())
        wanted.append(dice.pick(shape.slotNames));
    if (dice.oneIn(12))
        wanted.append(wanted.first());
    if (dice.oneIn(12))
        wanted.append("S9");
    return wanted;
}

Array randomLabels(Dice &dice)
{
    const QStringList usual{"SN", "SN", "SN", "MAC", "S1", "Lot No", "a-b", "7"};
    const QStringList wrong{"length", "clickedButton", "SharedInput"};
    Array labels{dice.oneIn(12) ? dice.pick(wrong) : dice.pick(usual)};
    if (dice.oneIn(10))
        labels.append("second");
    return labels;
}

Value randomButtons(Dice &dice)
{
    const QList<Value> buttons{Array{"Cancel", "OK"},
                               Array{"No", "Yes"},
                               Array{"OK"},
                               Array{"OK", "Cancel"},
                               Array{"Clear", "OK"},
                               Array{"OK", "OK"},
                               Array{"Repeat"},
                               Array{},
                               "Go",
                               12,
                               Dictionary{{"a", 1}},
                               Array{1, 2}};
    return dice.pick(buttons);
}

Value randomLength(Dice &dice)
{
    const QList<Value> lengths{0, 6, 7, 7, "8", 8.0, -3, "abc"};
    return dice.pick(lengths);
}

void addLooks(Dice &dice, Dictionary &config)
{
    if (dice.oneIn(8))
        config.insert("column", dice.pick(QList<Value>{1, 1, 2, 2, 3, "2", 40, -1}));
    if (dice.oneIn(8))
        config.insert("title", dice.pick(QStringList{"Load the fixture", "", "A title as long as a line"}));
    if (dice.oneIn(8))
        config.insert("label", dice.pick(QStringList{"MAC", "Lot", ""}));
    if (dice.oneIn(12))
        config.insert("backgroundAlpha", dice.pick(QList<Value>{0.1, 1, "0.5"}));
    if (dice.oneIn(12))
        config.insert("drawShadow", dice.pick(QList<Value>{true, "NO"}));
}

void addForm(Dice &dice, Dictionary &config)
{
    const QList<Value> numbers{Dictionary{{"min", 0}, {"max", 5}, {"unit", "V"}}, Dictionary{{"decimals", 0}},
                               Dictionary{{"max", 8.5}}, Dictionary{{"min", 5}, {"max", 1}}};
    switch (dice.below(9)) {
    case 0:
        config.insert("pattern", dice.pick(QStringList{"Z[0-9A-F]+", "Z[0-9A-F]+", "[0-9]+", "("}));
        break;
    case 1:
        config.insert("number", dice.pick(numbers));
        break;
    case 2:
        config.insert("choices", dice.oneIn(10) ? Array{} : Array{"Qgreen", "Qred", "Qblue", "qGrey"});
        break;
    default:
        return;
    }
    // A length that numbers and choices do not have would refuse them all.
    if (!dice.oneIn(8))
        config.remove("length");
}

void addJudging(Dice &dice, Dictionary &config)
{
    if (dice.oneIn(6))
        config.insert("validate",
                      dice.oneIn(12)
                          ? Value("nothing to call")
                          : Value(Dictionary{{"function", dice.oneIn(3) ? "accepts" : "refuses a third"}}));
    if (dice.oneIn(7))
        config.insert("unique", dice.pick(QStringList{"group", "station", "station", "run", "run", "all"}));
    if (dice.oneIn(12))
        config.insert("hint", "It stands on the label");
    if (dice.oneIn(6))
        config.insert("autoConfirm", dice.oneIn(15) ? Value("yes") : Value(!dice.oneIn(6)));
}

void addOffer(Dice &dice, Dictionary &config, bool forGroup)
{
    if (dice.oneIn(12))
        config.insert("placeholder", "Scan the unit");
    if (!dice.oneIn(7))
        return;
    const QString offered = config.contains("number")    ? QStringLiteral("3.5")
                            : config.contains("choices") ? QStringLiteral("Qred")
                                                         : QStringLiteral("ZDEF001");
    const QString other =
        config.contains("number") || config.contains("choices") ? offered : QStringLiteral("ZDEF002");
    config.insert("default", forGroup ? Value(Dictionary{{"S1", offered}, {"S2", other}}) : Value(offered));
}

/// Hardly any time, so little that it ends in the midst of something, and so much that nobody sees the end.
void addLimit(Dice &dice, Dictionary &config)
{
    if (dice.oneIn(14))
        config.insert("timeLimit", dice.pick(QList<Value>{0.02, 0.15, 0.3, 1000, 1000, 0, "soon"}));
}

Dictionary randomConfig(Dice &dice, const Shape &shape, bool forGroup)
{
    Dictionary config;
    const bool asksInput = !dice.oneIn(3);
    if (asksInput)
        config.insert("input", forGroup ? randomSlots(dice, shape) : randomLabels(dice));
    if (dice.oneIn(asksInput ? 20 : 2))
        config.insert("switch", randomSlots(dice, shape));
    if (dice.oneIn(25))
        config.insert(dice.oneIn(2) ? "input" : "switch", dice.pick(QList<Value>{"S1", 4, true}));
    if (dice.oneIn(2))
        config.insert("button", randomButtons(dice));
    if (dice.oneIn(2))
        config.insert("length", randomLength(dice));
    if (dice.oneIn(forGroup ? 10 : 4))
        config.insert("message", "Insert the next unit");
    addLooks(dice, config);
    // Without an entry these are refused, which has to be tried, too.
    if (asksInput || dice.oneIn(30)) {
        addForm(dice, config);
        addJudging(dice, config);
        addOffer(dice, config, forGroup);
    }
    addLimit(dice, config);
    return config;
}

} // namespace

Shape randomShape(Dice &dice)
{
    const int groups = 1 + dice.below(MostGroups);
    return shapeOf(groups, 1 + dice.below(MostSlots));
}

Request randomRequest(Dice &dice, const Shape &shape)
{
    switch (dice.below(20)) {
    case 0:
        return {Function::SetLoop, dice.pick(QList<Value>{0, 0, 1, 2, 3, -4, 2.5, "x"}), {}};
    case 1:
        return {Function::IsLoopFinished, Value(dice.below(shape.groups.size())), {}};
    case 2:
        return {Function::GetLoopConfig, {}, {}};
    case 3:
    case 4:
        return {Function::GetData, randomSystem(dice, shape), {}};
    default:
        break;
    }
    const bool forGroup = dice.oneIn(3);
    return {forGroup ? Function::ShowGroupView : Function::ShowView,
            forGroup ? randomGroup(dice, shape) : randomSystem(dice, shape),
            randomConfig(dice, shape, forGroup)};
}

} // namespace monkey
