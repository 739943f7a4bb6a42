#include "common/Log.h"

#include "platform/Button.h"
#include "platform/TextField.h"

#include <gtest/gtest.h>

namespace {

TEST(Log, DescribesViewsByClassAndIdentifier)
{
    platform::Button button(platform::Rect(0, 0, 10, 10));
    button.setIdentifier(platform::Identifier("Pass"));
    platform::TextField field(platform::Rect(0, 0, 10, 10));
    EXPECT_EQ(interactive::log::describe(&button), "<Button: Pass>");
    EXPECT_EQ(interactive::log::describe(&field), "<TextField: (null)>");
    EXPECT_EQ(interactive::log::describe(static_cast<const platform::View *>(nullptr)), "(null)");
    EXPECT_EQ(interactive::log::describe({&button, &field}), "(<Button: Pass>, <TextField: (null)>)");
    EXPECT_EQ(interactive::log::describe(QList<platform::View *>()), "()");
}

} // namespace
