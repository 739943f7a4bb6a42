#include "platform/Button.h"
#include "platform/Readable.h"
#include "platform/ScrollView.h"
#include "platform/TextField.h"
#include "presentation/SlotColors.h"
#include "tests/support/PanelKinds.h"

#include <QHash>
#include <QLineEdit>
#include <QPalette>

using interactive::SlotColors;
using platform::Array;
using platform::Color;
using platform::TextField;
namespace readable = platform::readable;

namespace {

QPalette lightPalette()
{
    return {QColor(236, 236, 236)};
}

QPalette darkPalette()
{
    QPalette palette(QColor(45, 46, 50));
    palette.setColor(QPalette::Base, QColor(30, 31, 34));
    return palette;
}

/// The colour that most of a picture has, and the one that stands out most from it.
struct Seen
{
    QColor ground;
    QColor text;

    /// Against another ground than most of the picture has, where one is given.
    explicit Seen(const QImage &picture, const QColor &given = {})
    {
        QHash<QRgb, int> counts;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                ++counts[picture.pixel(x, y)];
        }
        int most = 0;
        for (auto each = counts.cbegin(); each != counts.cend(); ++each) {
            if (each.value() > most) {
                most = each.value();
                ground = QColor(each.key());
            }
        }
        if (given.isValid()) {
            EXPECT_TRUE(counts.contains(given.rgb())) << given.name().toStdString() << " is not seen";
            ground = given;
        }
        text = ground;
        for (auto each = counts.cbegin(); each != counts.cend(); ++each) {
            if (readable::contrast(QColor(each.key()), ground) > readable::contrast(text, ground))
                text = QColor(each.key());
        }
    }
    [[nodiscard]] double contrast() const { return readable::contrast(text, ground); }
};

struct Scene
{
    testsupport::PanelKind kind;
    bool isDark = false;
    bool hasSystemColors = false;

    friend std::ostream &operator<<(std::ostream &stream, const Scene &scene) { return stream << scene.kind; }
};

class PanelContrast : public testsupport::PanelKindsFixture
{
protected:
    void useTheme(bool isDark)
    {
        start();
        window().setAutoFillBackground(true);
        window().setPalette(isDark ? darkPalette() : lightPalette());
    }
    QString shownText(const TextField &field)
    {
        return field.stringValue().isEmpty() ? field.placeholder() : field.stringValue();
    }
    /// Those that show a text.
    QList<TextField *> texts()
    {
        QList<TextField *> found;
        for (platform::View *view : testsupport::descendants(rootView())) {
            auto *field = qobject_cast<TextField *>(view);
            if (field && field->isVisible() && !field->visibleRegion().isEmpty() &&
                !shownText(*field).isEmpty())
                found.append(field);
        }
        return found;
    }
    /// A part of what the window shows, without a frame or ring around the control.
    Seen seen(const QWidget &widget, const QImage &all, int margin, const QColor &ground = {})
    {
        const QRect part = widget.visibleRegion().boundingRect().adjusted(margin, margin, -margin, -margin);
        return Seen(all.copy(part.translated(widget.mapTo(&window(), QPoint()))), ground);
    }
    /// A text that is selected lies on the colour of the selection.
    void expectSelectionReadable(const TextField &field, const QImage &all)
    {
        const QPalette palette = field.findChild<QLineEdit *>()->palette();
        EXPECT_GE(seen(field, all, 5, palette.color(QPalette::Highlight)).contrast(),
                  readable::LeastContrast);
    }
    void expectReadable()
    {
        window().repaint();
        const QImage all = window().grab().toImage().convertToFormat(QImage::Format_RGB32);
        for (const TextField *field : texts()) {
            const std::string which = shownText(*field).toStdString();
            EXPECT_GE(readable::contrast(field->shownTextColor(), field->groundOfText()),
                      readable::LeastContrast)
                << which;
            if (!field->selectedText().isEmpty()) {
                expectSelectionReadable(*field, all);
                continue;
            }
            const Seen look = seen(*field, all, field->isBordered() ? 5 : 0);
            EXPECT_GE(look.contrast(), readable::LeastContrast)
                << which << " " << look.text.name().toStdString() << " on "
                << look.ground.name().toStdString();
            EXPECT_LE(readable::contrast(look.ground, field->groundOfText()), 1.05)
                << which << ": " << look.ground.name().toStdString() << " is seen, "
                << field->groundOfText().name().toStdString() << " taken for it";
        }
        for (platform::View *view : testsupport::descendants(rootView())) {
            auto *button = qobject_cast<platform::Button *>(view);
            if (!button || !button->isVisible() || !button->isEnabled() || button->title().isEmpty())
                continue;
            EXPECT_GE(seen(*button, all, 6).contrast(), readable::LeastContrast)
                << button->title().toStdString();
        }
    }
};

class PanelInTheme : public PanelContrast, public ::testing::WithParamInterface<Scene>
{};

TEST_P(PanelInTheme, CanBeRead)
{
    const Scene &scene = GetParam();
    if (scene.hasSystemColors) {
        station.customColors = true;
        // A host's colours need not fit each other.
        station.backgrounds = {{0, {1.0, 0.8, 0.0, 1.0}}, {1, {0.1, 0.2, 0.5, 1.0}}};
        station.texts = {{0, {1.0, 1.0, 1.0, 1.0}}, {1, {0.1, 0.1, 0.1, 1.0}}};
    }
    useTheme(scene.isDark);
    open(scene.kind);
    expectReadable();
}

std::vector<Scene> scenes()
{
    std::vector<Scene> all;
    for (const testsupport::PanelKind &kind : testsupport::panelKinds()) {
        for (const bool isDark : {false, true})
            all.push_back({kind, isDark, false});
    }
    for (const bool isDark : {false, true}) {
        all.push_back({{"SlotColoured", false, {{"input", Array{"SN"}}}}, isDark, true});
        all.push_back({{"GroupColoured", true, {{"input", Array{"S1", "S2"}}}, {"A1", "B2"}}, isDark, true});
        all.push_back({{"SlotColouredOpaque", false, {{"input", Array{"SN"}}, {"backgroundAlpha", "0.9"}}},
                       isDark,
                       true});
    }
    return all;
}

INSTANTIATE_TEST_SUITE_P(, PanelInTheme, ::testing::ValuesIn(scenes()),
                         [](const ::testing::TestParamInfo<Scene> &scene) {
                             return std::string(scene.param.kind.name) +
                                    (scene.param.isDark ? "Dark" : "Light");
                         });

TEST_F(PanelContrast, APanelThatStandsFollowsAThemeThatChanges)
{
    useTheme(false);
    open({"", false, {{"input", Array{"SN"}}, {"backgroundAlpha", "0.05"}}});
    scan("A1");
    window().setPalette(darkPalette());
    settle();
    expectReadable();
    window().setPalette(lightPalette());
    settle();
    expectReadable();
}

TEST_F(PanelContrast, ASlotThatIsSwitchedOffLooksOffInADarkWindowToo)
{
    useTheme(true);
    open({"", true, {{"input", Array{"S1", "S2"}}}});
    for (platform::View *view : testsupport::descendants(rootView())) {
        if (view->identifier().text() == "G1-100-S1")
            click(view);
    }
    expectReadable();
    const TextField *caption = nullptr;
    for (const TextField *each : texts()) {
        if (each->stringValue() == "S1")
            caption = each;
    }
    ASSERT_NE(caption, nullptr);
    EXPECT_EQ(caption->groundOfText(), darkPalette().color(QPalette::Window));
}

TEST_F(PanelContrast, WhatACodeFixesStaysAsItIs)
{
    useTheme(true);
    open({"SlotError", false, {{"input", Array{"A", "B"}}}});
    int red = 0;
    for (const TextField *each : texts())
        red += each->textColor() == Color::standardRed() ? 1 : 0;
    EXPECT_EQ(red, 1);
}

TEST_F(PanelContrast, WhatIsBeingCheckedLooksDifferentFromARefusal)
{
    useTheme(false);
    const auto gate = std::make_shared<testsupport::GatedFunction>([](const auto &, const auto &) {
        return Array{false, "no"};
    });
    gate->close();
    open({"",
          false,
          {{"input", Array{"SN"}},
           {"validate", platform::Value::fromValue<std::shared_ptr<platform::Callback>>(gate)}}});
    scan("A1");
    const TextField *line = field("0-StatusLine");
    ASSERT_EQ(line->stringValue(), "\"A1\" is being checked ...");
    expectReadable();
    const QColor text = line->shownTextColor();
    const QColor ground = line->groundOfText();
    EXPECT_GT(text.blue(), text.red());
    expectError("Invalid input");
    gate->open();
    ASSERT_TRUE(testsupport::waitUntil([&] { return line->stringValue() == "\"A1\" is refused: no"; }));
    EXPECT_GT(line->shownTextColor().red(), line->shownTextColor().blue());
    EXPECT_NE(line->shownTextColor(), text);
    EXPECT_NE(line->groundOfText(), ground);
    expectReadable();
}

TEST_F(PanelContrast, ARefusalStandsOnTheColourOfItsSystem)
{
    useTheme(true);
    open({"", false, {{"input", Array{"SN"}}, {"length", 4}, {"hint", "four characters"}}});
    expectError("Invalid input");
    scan("A1");
    const TextField *line = field("0-StatusLine");
    ASSERT_FALSE(line->stringValue().isEmpty());
    EXPECT_FALSE(line->drawsBackground());
    expectReadable();
}

TEST_F(PanelContrast, AReasonThatIsCutCanBeReadInFull)
{
    const QString why = QString("the board came from a lot that was called back ").repeated(4).trimmed();
    const auto gate = std::make_shared<testsupport::GatedFunction>([why](const auto &, const auto &) {
        return Array{false, why};
    });
    open({"",
          false,
          {{"input", Array{"SN"}},
           {"validate", platform::Value::fromValue<std::shared_ptr<platform::Callback>>(gate)}}});
    expectError("Invalid input");
    scan("A1");
    TextField *line = field("0-StatusLine");
    ASSERT_TRUE(testsupport::waitUntil([&] { return line->stringValue().contains(why); }));
    ASSERT_FALSE(line->showsWholeText());
    EXPECT_TRUE(QString(line->toolTip()).simplified().contains("called back the board came")) << "tool tip";
    EXPECT_EQ(operatorLines, QStringList{line->stringValue()});
    EXPECT_EQ(field("0-SN")->focusTarget()->accessibleDescription(), line->stringValue());
}

} // namespace
