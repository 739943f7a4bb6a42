#pragma once

#include "kovan/KovanLuaSequencer/KVKLuaLimits.h"
#include "platform/View.h"
#include "station/badge/BadgeField.h"
#include "station/scanner/ScannerSettings.h"

#include <QAction>
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
    /// What starts and stops the sequences; Run can be pressed exactly while none runs.
    QPointer<QAction> run = {};
    QPointer<QAction> stop = {};
    /// What the script may use of the machine.
    KVKLuaLimits lua = {};
    /// Where a badge is written; null where none is asked for.
    QPointer<BadgeField> badge = {};
    /// The badges of those whom a script logs in.
    QStringList badges = {};
};

} // namespace station
