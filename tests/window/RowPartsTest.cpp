#include "station/window/ColumnFit.h"
#include "station/window/StateSign.h"
#include "station/window/SystemRow.h"
#include "station/window/TimeText.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <chrono>
#include <utility>

using station::SystemState;

TEST(StateSign, EveryStateHasOneOfItsOwn)
{
    QList<QImage> signs;
    for (const SystemState state :
         {SystemState::Idle, SystemState::Running, SystemState::Waiting, SystemState::Passed,
          SystemState::Failed, SystemState::Erred, SystemState::Stopped}) {
        QImage image(24, 24, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter(&image).fillPath(station::stateSign(state, image.rect()), Qt::black);
        EXPECT_FALSE(signs.contains(image)) << stateText(state).toStdString();
        signs.append(image);
    }
}

TEST(TimeText, CountsAsAClockDoes)
{
    const std::pair<int, const char *> cases[] = {{-1, "0:00"},      {0, "0:00"},           {7, "0:07"},
                                                  {60, "1:00"},      {3599, "59:59"},       {3600, "1:00:00"},
                                                  {3661, "1:01:01"}, {360'000, "100:00:00"}};
    for (const auto &[seconds, text] : cases)
        EXPECT_EQ(station::timeText(std::chrono::seconds(seconds)), text);
}

TEST(ColumnFit, NarrowsInOneOrderAndLeavesOutInAnother)
{
    const QList<station::ColumnWish> wishes{
        {50, 50, 0, 0, false}, {100, 60, 1, 2, true}, {80, 40, 2, 1, false}};
    const std::pair<int, QList<int>> cases[] = {
        {300, {50, 170, 80}}, {230, {50, 100, 80}}, {210, {50, 80, 80}},
        {160, {50, 60, 50}},  {150, {50, 60, 40}},  {149, {50, 99, 0}},
        {110, {50, 60, 0}},   {109, {50, 0, 0}},    {10, {50, 0, 0}}};
    for (const auto &[room, widths] : cases)
        EXPECT_EQ(station::fitColumns(wishes, room), widths) << room;
}
