#pragma once

#include "tests/support/PanelFixture.h"

namespace testsupport {

/// A station whose group buttons and switches are pressed and asked about.
///
/// Thread: the main thread.
class GroupFixture : public PanelFixture
{
protected:
    /// The very instance by which the group's panels are found.
    platform::Identifier key(const QString &group) { return groupButton(group)->identifier(); }
    /// A panel of that identifier in the split view, with nothing in it.
    platform::View *addPane(const platform::Identifier &identifier);
    /// The switch of a slot on a group panel; null when there is none.
    static platform::Button *switchOf(platform::View *slotContent);

    /// Every line of the system log since the last clear, in order: "debug: text". Fails the test when the
    /// host's proxy has others.
    QStringList logged() const;
};

} // namespace testsupport
