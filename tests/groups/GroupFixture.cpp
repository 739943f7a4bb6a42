#include "tests/groups/GroupFixture.h"

namespace testsupport {
namespace {

QString levelName(KVKLogLevel level)
{
    switch (level) {
    case KVKLogLevel::Default:
        return QStringLiteral("default");
    case KVKLogLevel::Debug:
        return QStringLiteral("debug");
    case KVKLogLevel::Error:
        break;
    }
    return QStringLiteral("error");
}

QStringList inWords(const std::vector<LogRecorder::Line> &lines)
{
    QStringList texts;
    for (const LogRecorder::Line &line : lines)
        texts.append(levelName(line.level) + QStringLiteral(": ") + line.message);
    return texts;
}

} // namespace

platform::View *GroupFixture::addPane(const platform::Identifier &identifier)
{
    auto *made = new platform::View(platform::Rect(0, 0, 100, 50));
    made->setIdentifier(identifier);
    splitView()->addSubview(made);
    return made;
}

platform::Button *GroupFixture::switchOf(platform::View *slotContent)
{
    return buttons(slotContent).value(0);
}

QStringList GroupFixture::logged() const
{
    const QStringList system = inWords(log.systemLines());
    EXPECT_EQ(system, inWords(log.proxyLines())) << "the two logs do not agree";
    return system;
}

} // namespace testsupport
