#include "station/check/LuaOperators.h"

#include <map>

namespace station {

std::optional<LuaBinding> bindingOfBinary(const QByteArray &symbol)
{
    static const std::map<QByteArray, LuaBinding> operators{
        {"or", {1, 1}},   {"and", {2, 2}}, {"<", {3, 3}},   {">", {3, 3}},   {"<=", {3, 3}},  {">=", {3, 3}},
        {"~=", {3, 3}},   {"==", {3, 3}},  {"|", {4, 4}},   {"~", {5, 5}},   {"&", {6, 6}},   {"<<", {7, 7}},
        {">>", {7, 7}},   {"..", {9, 8}},  {"+", {10, 10}}, {"-", {10, 10}}, {"*", {11, 11}}, {"/", {11, 11}},
        {"//", {11, 11}}, {"%", {11, 11}}, {"^", {14, 13}}};
    const auto found = operators.find(symbol);
    return found == operators.end() ? std::nullopt : std::optional(found->second);
}

} // namespace station
