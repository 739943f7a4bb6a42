#pragma once

namespace interactive {

/// The codes of the errors that the plug-in's functions report, in the domain InteractivePluginErrorDomain. A
/// caller tests for the presence of an error, not for its code.
enum ErrorCode {
    ErrorInputAndSwitch = 100,
    ErrorLabelIsNoSlotName = 101,
    ErrorTooManyLabels = 102,
    ErrorColumnExceedsSlots = 103,
    ErrorTooManyOrDuplicatedInputs = 104,
    ErrorTooManyInputsForSystem = 105,
    // A value that its key does not take
    ErrorPattern = 110,
    ErrorHint = 111,
    ErrorValidate = 112,
    ErrorUnique = 113,
    ErrorNumber = 114,
    ErrorChoices = 115,
    ErrorDefault = 116,
    ErrorPlaceholder = 117,
    ErrorAutoConfirm = 118,
    ErrorTimeLimit = 119,
    ErrorImage = 120,
    ErrorInstruction = 121,
    ErrorDataNotFound = 201,
    ErrorSwitchPanelNotConfirmed = 301,
    /// The host ended the call while it waited for the operator.
    ErrorInterrupted = 401,
    /// The station or the configuration leaves no panel that could be drawn.
    ErrorNothingToDraw = 402,
    /// A show call was made on the main thread, where it would wait for itself.
    ErrorOnMainThread = 403,
    /// The station has no such system, so nobody could answer.
    ErrorNoSuchSystem = 404,
    /// A label that the panel's record needs for itself.
    ErrorReservedLabel = 405,
    /// The panel was not answered within its time limit.
    ErrorTimeOver = 406,
};

} // namespace interactive
