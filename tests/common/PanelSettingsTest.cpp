#include "common/PanelSettings.h"

#include <gtest/gtest.h>

#include <thread>

using interactive::PanelLook;
using interactive::PanelSettings;

namespace {

TEST(PanelSettings, WhatAConfigurationGivesCarriesOver)
{
    PanelSettings settings;
    settings.setLook({0.3, false});
    EXPECT_EQ(settings.takeLook({{"backgroundAlpha", 0.5}}), (PanelLook{0.5, false}));
    EXPECT_EQ(settings.takeLook({{"drawShadow", "yes"}}), (PanelLook{0.5, true}));
    EXPECT_EQ(settings.takeLook({{"backgroundAlpha", ""}}), (PanelLook{0.5, true}));
}

TEST(PanelSettings, TwoCallsAtOnceEachGetTheirOwn)
{
    PanelSettings settings;
    const auto takes = [&settings](double alpha, bool shadow) {
        for (int i = 0; i < 2000; ++i) {
            const PanelLook look = settings.takeLook({{"backgroundAlpha", alpha}, {"drawShadow", shadow}});
            if (look != PanelLook{alpha, shadow})
                return false;
        }
        return true;
    };
    bool other = false;
    std::thread thread([&] { other = takes(0.25, true); });
    const bool own = takes(0.75, false);
    thread.join();
    EXPECT_TRUE(own);
    EXPECT_TRUE(other);
}

} // namespace
