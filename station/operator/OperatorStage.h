#pragma once

#include "platform/View.h"
#include "station/scanner/ScannerSettings.h"

#include <QPointer>

namespace station {

/// What the simulated operator sees and touches.
struct OperatorStage
{
    /// The window that gets the keys and the mouse, and that pictures are taken of.
    QPointer<QWidget> window;
    /// The plug-in's view, in which panels and controls are looked for. It lies in the window.
    QPointer<platform::View> root;
    /// The plug-in's context, whose properties a script may ask for.
    QPointer<QObject> context;
    /// What the operator's scanner sends.
    ScannerSettings scanner = {};
};

} // namespace station
