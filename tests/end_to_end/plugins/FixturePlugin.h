#pragma once

#include "kovan/KovanUIExtension/KVKExtensionInteractiveView.h"
#include "platform/ViewController.h"

/// What the broken plug-ins have in common: as much of a plug-in as the host asks for, with an empty view.
class FixturePlugin : public platform::ViewController, public KVKExtensionInteractiveView
{
public:
    QObject *pluginContext() override { return this; }
    platform::Dictionary pluginConstants() override { return {}; }
    platform::Dictionary pluginFunctionTable() override { return {}; }
    double minHeightHint() override { return 100.0; }
    double minWidthHint() override { return 100.0; }

protected:
    platform::View *loadView() override { return new platform::View(platform::Rect(0.0, 0.0, 100.0, 100.0)); }
};
