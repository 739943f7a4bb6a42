#include "platform/Value.h"
#include "plugin/Configuration.h"

#include <gtest/gtest.h>

using interactive::doubtsAbout;
using platform::Array;
using platform::Dictionary;

namespace {

TEST(ConfigurationDoubts, AKnownConfigurationHasNone)
{
    EXPECT_TRUE(doubtsAbout({{"input", Array{"SN"}},
                             {"switch", Array{}},
                             {"button", Array{}},
                             {"length", "10"},
                             {"message", ""},
                             {"label", "MAC"},
                             {"title", "T"},
                             {"column", 2},
                             {"backgroundAlpha", 0.5},
                             {"drawShadow", true},
                             {"messageFont", 12},
                             {"messageColor", "Navy"},
                             {"messageAlignment", 4}},
                            "m")
                    .isEmpty());
}

TEST(ConfigurationDoubts, AnUnknownKeyIsNamedWithTheNearestKnownOne)
{
    EXPECT_EQ(doubtsAbout({{"lenght", 4}}, "m"),
              QStringList{"m: key 'lenght' is not known; it is not used. Did you mean 'length'?"});
    EXPECT_EQ(doubtsAbout({{"Input", 4}}, "m"),
              QStringList{"m: key 'Input' is not known; it is not used. Did you mean 'input'?"});
    EXPECT_EQ(doubtsAbout({{"x", 4}}, "m"), QStringList{"m: key 'x' is not known; it is not used"});
    EXPECT_EQ(doubtsAbout({{"%2 of %1", 4}}, "m"),
              QStringList{"m: key '%2 of %1' is not known; it is not used"});
}

TEST(ConfigurationDoubts, ALengthThatNoFieldTakesIsTold)
{
    EXPECT_EQ(doubtsAbout({{"length", 4096}}, "m"), QStringList());
    EXPECT_EQ(doubtsAbout({{"length", 4097}}, "m"),
              QStringList{"m: 'length' is 4097, but a field takes up to 4096 characters: no entry will do"});
}

TEST(ConfigurationDoubts, AValueThatIsTakenForSomethingElseIsNamed)
{
    EXPECT_EQ(doubtsAbout({{"length", "ten"}}, "m"),
              QStringList{"m: 'length' is ten, which is no number; 0 is used"});
    EXPECT_EQ(doubtsAbout({{"length", "10 cm"}}, "m"),
              QStringList{"m: 'length' is 10 cm, which is no number; 10 is used"});
    EXPECT_EQ(doubtsAbout({{"messageColor", "grey"}}, "m"),
              QStringList{"m: 'messageColor' is grey, which is no colour's name; it is not used"});
    for (const char *alignment : {"0", "4"})
        EXPECT_TRUE(doubtsAbout({{"messageAlignment", alignment}}, "m").isEmpty());
    for (const char *alignment : {"5", "-1"}) {
        EXPECT_EQ(doubtsAbout({{"messageAlignment", alignment}}, "m"),
                  QStringList{QStringLiteral("m: 'messageAlignment' is %1, not 0 to 4; the text is centred")
                                  .arg(QLatin1String(alignment))});
    }
    EXPECT_EQ(doubtsAbout({{"messageAlignment", "left"}}, "m"),
              QStringList{"m: 'messageAlignment' is left, which is no number; 0 is used"});
}

} // namespace
