#include "station/window/OperatorText.h"

#include <gtest/gtest.h>

#include <utility>

TEST(OperatorText, LeavesOutWhatNoOperatorCanReadAndNothingElse)
{
    const std::pair<const char *, const char *> cases[] = {
        {"the lamp is off", "the lamp is off"},
        {"-[InteractiveView showGroupView:config:error:]: Invalid config. Value for key 'switch' is not "
         "array.",
         "Invalid config. Value for key 'switch' is not array."},
        {"__37-[InteractiveView confirmBtnClicked:]_block_invoke: Inputs are valid. But group is disabled.",
         "Inputs are valid. But group is disabled."},
        {"Invalid call for -[InteractiveView checkInput:] from sender: <TextField: G1-S1>",
         "Invalid call from sender: G1-S1"},
        {"no room for <View: 0x55d0c0ffee> at 0x7ffd12345678", "no room for  at"},
        {"system 3: ask.lua:2: open\nstack traceback:\n\t[C]: in ?", "system 3: ask.lua:2: open"},
        {"a\r\nb", "a b"},
        {"register 0x40021000 reads <low: 3> [a b:] 1-[2 3:]",
         "register 0x40021000 reads <low: 3> [a b:] 1-[2 3:]"},
        {"-[InteractiveView checkInput:]: ", "-[InteractiveView checkInput:]: "},
        {"", ""}};
    for (const auto &[message, told] : cases)
        EXPECT_EQ(station::operatorText(QString::fromUtf8(message)).toStdString(), told) << message;
}
