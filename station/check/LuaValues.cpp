#include "station/check/LuaValues.h"

#include "kovan/KovanUIExtension/KVKExtensionConfigurationCheck.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

namespace station {
namespace {

using Kind = LuaExpression::Kind;

/// As deep as the sequencer hands values on.
constexpr int DeepestValue = 64;
constexpr int MostValues = 200'000;
/// Locals may name each other in a long row.
constexpr int LongestRow = 1000;

platform::Value unknown()
{
    return platform::Value::fromValue(KVKUnknownValue());
}

bool isUnknown(const platform::Value &value)
{
    return value.metaType() == QMetaType::fromType<KVKUnknownValue>();
}

std::optional<QString> textOf(const QByteArray &bytes)
{
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    const QString text = decoder(bytes);
    return decoder.hasError() ? std::nullopt : std::optional(text);
}

/// As Lua writes a number.
QString numberText(double number)
{
    // Not by Qt, which writes no sign before a zero.
    std::array<char, 32> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), number, std::chars_format::general, 14)
            .ptr;
    const QString text = QString::fromLatin1(digits.data(), end - digits.data());
    return text.contains(QLatin1Char('.')) || text.contains(QLatin1Char('e')) || !std::isfinite(number)
               ? text
               : text + QStringLiteral(".0");
}

/// Whether the expression may give any number of values, or none.
bool isMany(const LuaExpression &expression)
{
    return expression.kind == Kind::Call || expression.kind == Kind::Method ||
           expression.kind == Kind::Varargs;
}

/// Those that hand on what stands inside a table.
bool handsOnElements(const QString &function)
{
    return function == QLatin1String("pairs") || function == QLatin1String("ipairs") ||
           function == QLatin1String("next") || function == QLatin1String("table.unpack");
}

} // namespace

LuaValues::LuaValues(const LuaTree &tree, const OnlyReads &onlyReads)
    : m_onlyReads(onlyReads)
{
    std::map<const LuaExpression *, const LuaLocal *> holders;
    for (const LuaLocal &local : tree.locals) {
        if (local.value)
            holders.emplace(local.value, &local);
    }
    for (const LuaExpression *expression : tree.evaluated) {
        const auto holder = holders.find(expression);
        look(*expression, holder == holders.end() ? Use{} : Use{Use::Kind::Held, holder->second});
    }
    for (const LuaTree::Assignment &assignment : tree.assignments)
        lookAtTarget(*assignment.target);
    for (const LuaLocal &local : tree.locals) {
        if (local.isAssigned)
            m_changeable.insert(&local);
    }
    releaseHeld();
    // Made from what seemed known.
    m_items.clear();
}

/// What a local holds can be changed through it.
void LuaValues::releaseHeld()
{
    std::vector<const LuaLocal *> open(m_changeable.begin(), m_changeable.end());
    while (!open.empty()) {
        const LuaLocal *local = open.back();
        open.pop_back();
        for (const LuaLocal *held : m_held[local]) {
            if (m_changeable.insert(held).second)
                open.push_back(held);
        }
    }
}

void LuaValues::look(const LuaExpression &expression, const Use &use)
{
    const Use read{Use::Kind::Read};
    switch (expression.kind) {
    case Kind::Local:
        if (use.kind == Use::Kind::Held)
            m_held[use.holder].insert(expression.local);
        else if (use.kind == Use::Kind::Anything)
            m_changeable.insert(expression.local);
        return;
    case Kind::Index:
        // A number or a text that is read out of a table leaves it as it is; a table that is read out of it
        // is a part of it.
        look(*expression.parts[0], holdsTables(expression) ? use : read);
        look(*expression.parts[1], read);
        return;
    case Kind::Call:
        lookAtCall(expression);
        return;
    case Kind::Table:
        for (const LuaExpression::Item &item : expression.items) {
            if (item.key)
                look(*item.key, read);
            look(*item.value, use);
        }
        return;
    case Kind::Concat:
    case Kind::Minus:
    case Kind::Measure:
        for (const LuaExpression *part : expression.parts)
            look(*part, read);
        return;
    case Kind::Method:
        for (const LuaExpression *part : expression.parts)
            look(*part, {});
        return;
    default:
        for (const LuaExpression *part : expression.parts)
            look(*part, use);
        return;
    }
}

void LuaValues::lookAtCall(const LuaExpression &call)
{
    look(*call.parts[0], {Use::Kind::Read});
    const std::optional<QString> name = nameBehind(*call.parts[0]);
    for (std::size_t i = 1; i < call.parts.size(); ++i) {
        bool reads = name && m_onlyReads(*name);
        if (reads && handsOnElements(*name)) {
            const LuaExpression &argument = behind(*call.parts[i]);
            for (const LuaExpression::Item &item : argument.items)
                reads = reads && !holdsTables(*item.value);
        }
        look(*call.parts[i], reads ? Use{Use::Kind::Read} : Use{});
    }
}

/// What is assigned to: of "config.input[1]", config may be changed.
void LuaValues::lookAtTarget(const LuaExpression &target)
{
    if (target.kind != Kind::Index)
        return;
    const LuaExpression *object = target.parts[0];
    while (object->kind == Kind::Index || object->kind == Kind::Paren) {
        if (object->kind == Kind::Index)
            look(*object->parts[1], {Use::Kind::Read});
        object = object->parts[0];
    }
    look(*object, {});
    look(*target.parts[1], {Use::Kind::Read});
}

/// Whether the value may be a table, as far as is known now.
bool LuaValues::holdsTables(const LuaExpression &expression) const
{
    switch (behind(expression).kind) {
    case Kind::Nil:
    case Kind::Boolean:
    case Kind::Integer:
    case Kind::Number:
    case Kind::Text:
    case Kind::Concat:
    case Kind::Minus:
    case Kind::Measure:
    case Kind::Function:
        return false;
    default:
        return true;
    }
}

const LuaValues::Items &LuaValues::itemsOf(const LuaExpression &table) const
{
    const auto known = m_items.find(&table);
    if (known != m_items.end())
        return known->second;
    Items items(std::in_place);
    int position = 0;
    for (const LuaExpression::Item &item : table.items) {
        position += item.key ? 0 : 1;
        const std::optional<Key> key = luaKeyOf(item, position);
        const auto other = key ? items->constFind(key->text) : items->constEnd();
        // Lua gives the items without a key their numbers in portions, before or after what has a key.
        const bool isUnclear = key && other != items->constEnd() &&
                               (other->isNumber != key->isNumber || !other->item->key || !item.key);
        if (!key || isUnclear)
            return m_items.emplace(&table, std::nullopt).first->second;
        items->insert(key->text, {&item, key->isNumber});
    }
    return m_items.emplace(&table, std::move(items)).first->second;
}

const LuaExpression::Item *LuaValues::itemOf(const LuaExpression &table, const QString &key) const
{
    const Items &items = itemsOf(table);
    return items ? items->value(key).item : nullptr;
}

/// One step from an expression towards what gives its value; null where there is none.
const LuaExpression *LuaValues::step(const LuaExpression &expression) const
{
    if (expression.kind == Kind::Paren)
        return expression.parts[0];
    if (expression.kind == Kind::Local) {
        const LuaLocal &local = *expression.local;
        return local.isAssigned || m_changeable.contains(&local) ? nullptr : local.value;
    }
    if (expression.kind != Kind::Index)
        return nullptr;
    const LuaExpression &object = behind(*expression.parts[0]);
    if (object.kind != Kind::Table)
        return nullptr;
    const std::optional<Key> key = luaKeyOf({expression.parts[1], nullptr}, 0);
    const Items &items = itemsOf(object);
    if (!key || !items)
        return nullptr;
    const Entry entry = items->value(key->text);
    return entry.item && entry.isNumber == key->isNumber ? entry.item->value : nullptr;
}

const LuaExpression &LuaValues::behind(const LuaExpression &expression) const
{
    const LuaExpression *at = &expression;
    for (int i = 0; i < LongestRow; ++i) {
        const LuaExpression *next = step(*at);
        if (!next)
            break;
        at = next;
    }
    return *at;
}

std::optional<QString> LuaValues::nameOf(const LuaExpression &expression)
{
    if (expression.kind == Kind::Global)
        return QString::fromUtf8(expression.text);
    if (expression.kind == Kind::Paren)
        return nameOf(*expression.parts[0]);
    if (expression.kind != Kind::Index || expression.parts[1]->kind != Kind::Text)
        return std::nullopt;
    const std::optional<QString> object = nameOf(*expression.parts[0]);
    if (!object)
        return std::nullopt;
    const QString field = QString::fromUtf8(expression.parts[1]->text);
    return *object == QLatin1String("_G") ? field : *object + QLatin1Char('.') + field;
}

std::optional<QString> LuaValues::nameBehind(const LuaExpression &expression) const
{
    const LuaExpression &found = behind(expression);
    if (found.kind != Kind::Index || found.parts[0]->kind == Kind::Global)
        return nameOf(found);
    const std::optional<QString> object = nameBehind(*found.parts[0]);
    if (!object || found.parts[1]->kind != Kind::Text)
        return std::nullopt;
    const QString field = QString::fromUtf8(found.parts[1]->text);
    return *object == QLatin1String("_G") ? field : *object + QLatin1Char('.') + field;
}

platform::Value LuaValues::valueOf(const LuaExpression &expression) const
{
    m_valuesLeft = MostValues;
    return value(expression, 0);
}

platform::Value LuaValues::value(const LuaExpression &expression, int depth) const
{
    if (depth > DeepestValue || --m_valuesLeft < 0)
        return unknown();
    const LuaExpression &found = behind(expression);
    switch (found.kind) {
    case Kind::Nil:
        return {};
    case Kind::Boolean:
        return found.integer != 0;
    case Kind::Integer:
        return qlonglong{found.integer};
    case Kind::Number:
        return found.number;
    case Kind::Text: {
        const std::optional<QString> text = textOf(found.text);
        return text ? platform::Value(*text) : unknown();
    }
    case Kind::Table:
        return tableValue(found, depth);
    case Kind::Concat:
        return joined(found, depth);
    case Kind::Minus: {
        const platform::Value operand = value(*found.parts[0], depth + 1);
        if (operand.metaType() == QMetaType::fromType<double>())
            return -operand.toDouble();
        // The lowest number is its own opposite, as in Lua.
        if (operand.metaType() == QMetaType::fromType<qlonglong>())
            return static_cast<qlonglong>(0 - operand.toULongLong());
        return unknown();
    }
    default:
        return unknown();
    }
}

platform::Value LuaValues::joined(const LuaExpression &concat, int depth) const
{
    QString text;
    for (const LuaExpression *part : concat.parts) {
        const platform::Value operand = value(*part, depth + 1);
        if (operand.metaType() == QMetaType::fromType<double>())
            text += numberText(operand.toDouble());
        else if (operand.metaType() == QMetaType::fromType<QString>() ||
                 operand.metaType() == QMetaType::fromType<qlonglong>())
            text += operand.toString();
        else
            return unknown();
    }
    return text;
}

std::optional<QString> LuaValues::keyOf(const LuaExpression::Item &item, int position) const
{
    const std::optional<Key> key = luaKeyOf(item, position);
    return key ? std::optional(key->text) : std::nullopt;
}

std::optional<LuaValues::Key> LuaValues::luaKeyOf(const LuaExpression::Item &item, int position) const
{
    if (!item.key)
        return Key{QString::number(position), true};
    m_valuesLeft = std::max(m_valuesLeft, DeepestValue);
    const platform::Value key = value(*item.key, 0);
    if (key.metaType() == QMetaType::fromType<QString>() ||
        key.metaType() == QMetaType::fromType<qlonglong>())
        return Key{key.toString(), key.metaType() == QMetaType::fromType<qlonglong>()};
    // Lua makes a whole number of 2.0.
    if (key.metaType() == QMetaType::fromType<double>() && std::trunc(key.toDouble()) == key.toDouble() &&
        std::abs(key.toDouble()) < 1e15)
        return Key{QString::number(static_cast<qint64>(key.toDouble())), true};
    return std::nullopt;
}

platform::Value LuaValues::tableValue(const LuaExpression &table, int depth) const
{
    // A key that is not known may be any of them.
    if (!itemsOf(table))
        return unknown();
    platform::Dictionary entries;
    int position = 0;
    bool hasTextKeys = false;
    for (const LuaExpression::Item &item : table.items) {
        position += item.key ? 0 : 1;
        const std::optional<Key> key = luaKeyOf(item, position);
        if (!key)
            return unknown();
        const platform::Value each = value(*item.value, depth + 1);
        hasTextKeys = hasTextKeys || (each.isValid() && !key->isNumber);
        if (each.isValid())
            entries.insert(key->text, each);
        else
            entries.remove(key->text);
    }
    platform::Array list;
    for (qsizetype i = 1; i <= entries.size(); ++i)
        list.append(entries.value(QString::number(i), platform::Value()));
    // As the sequencer has it: a list has the numbers from 1 on as its keys, however they are written.
    const bool isList =
        !hasTextKeys &&
        std::all_of(list.cbegin(), list.cend(), [](const platform::Value &each) { return each.isValid(); });
    if (!isList)
        return entries;
    // A call at the end may give no element, or several; the one that is not known stands for all of them.
    if (position > 0 && !table.items.back().key && isMany(*table.items.back().value) && !list.isEmpty() &&
        !isUnknown(list.constLast()))
        list.last() = unknown();
    return list;
}

LuaPlace LuaValues::placeOf(const LuaExpression &expression, const QStringList &keys) const
{
    const LuaExpression *at = &expression;
    LuaPlace place = expression.place;
    for (const QString &key : keys) {
        const LuaExpression &table = behind(*at);
        const LuaExpression::Item *item = table.kind == Kind::Table ? itemOf(table, key) : nullptr;
        if (!item)
            break;
        place = item->key ? item->key->place : item->value->place;
        at = item->value;
    }
    return place;
}

} // namespace station
