#include "kovan/KovanLuaSequencer/KVKLabels.h"
#include "platform/Error.h"
#include "platform/MainQueue.h"
#include "tests/end_to_end/plugins/FixturePlugin.h"

#include <QApplication>
#include <QMainWindow>

#include <cstdio>

namespace {

bool isWindowThere()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (qobject_cast<QMainWindow *>(window))
            return true;
    }
    return false;
}

} // namespace

/// Says on the error stream what it finds there when it goes. Its function throws what is no std::exception.
class TellsItsEnd : public FixturePlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID KVKExtensionInteractiveView_iid)
    Q_INTERFACES(KVKExtensionInteractiveView)
public:
    ~TellsItsEnd() override
    {
        std::fputs(qApp && isWindowThere() ? "gone before the window\n" : "gone after the window\n", stderr);
        platform::MainQueue::async([] { std::fputs("gone before the queue\n", stderr); });
    }

    platform::Dictionary pluginFunctionTable() override
    {
        return {{QStringLiteral("throwNumber"), platform::Array{__kviGetSelectorLabel("throwNumber:")}}};
    }

    Q_INVOKABLE platform::Value throwNumber(platform::Error *) { throw 42; }
};

#include "TellsItsEnd.moc"
