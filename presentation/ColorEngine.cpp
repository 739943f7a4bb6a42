#include "presentation/ColorEngine.h"

#include <QHash>

namespace interactive {

namespace {

platform::Color fromBytes(int red, int green, int blue)
{
    return {red / 255.0, green / 255.0, blue / 255.0, 1.0};
}

QHash<QString, platform::Color> makeTable()
{
    return {
        {ColorNameKeyNavy, fromBytes(0, 0, 128)},      {ColorNameKeyBlue, fromBytes(0, 0, 255)},
        {ColorNameKeyTeal, fromBytes(0, 128, 128)},    {ColorNameKeyCyan, fromBytes(0, 240, 240)},
        {ColorNameKeyGray, fromBytes(128, 128, 128)},  {ColorNameKeySilver, fromBytes(204, 204, 204)},
        {ColorNameKeyBrown, fromBytes(119, 51, 0)},    {ColorNameKeyPink, fromBytes(255, 102, 255)},
        {ColorNameKeyMagenta, fromBytes(128, 0, 128)}, {ColorNameKeyPurple, fromBytes(153, 51, 255)},
        {ColorNameKeyWhite, fromBytes(255, 255, 255)}, {ColorNameKeyBlack, fromBytes(0, 0, 0)},
        {ColorNameKeyRed, fromBytes(255, 0, 0)},       {ColorNameKeyYellow, fromBytes(255, 255, 0)},
        {ColorNameKeyOrange, fromBytes(255, 165, 0)},  {ColorNameKeyGreen, fromBytes(0, 255, 0)},
    };
}

} // namespace

std::optional<platform::Color> ColorEngine::colorForName(const QString &name)
{
    // Made for each look-up: a panel asks for one colour or two, and without a state any thread may ask.
    const QHash<QString, platform::Color> table = makeTable();
    const auto found = table.constFind(name.toLower());
    return found == table.constEnd() ? std::nullopt : std::optional(*found);
}

} // namespace interactive
