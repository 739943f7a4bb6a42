#pragma once

/// The texts of the plug-in's errors and log lines, once each and exactly as they are written; placeholders
/// are those of platform::formatMessage.
namespace interactive::messages {

// Errors
inline constexpr char InputAndSwitch[] =
    "Invalid config. 'input' and 'switch' cannot be defined at the same time";
inline constexpr char LabelIsNoSlotName[] =
    "Invalid config. Slot labels for showGroupView() must be slot name.";
inline constexpr char TooManyLabels[] = "Invalid config. Invalid slot labels appeared in groupView config.";
inline constexpr char ColumnExceedsSlots[] = "Invalid config. Input column exceeds slot number.";
inline constexpr char TooManyOrDuplicatedInputs[] =
    "Invalid config. Allow up to 12 input fields and no duplications.";
inline constexpr char TooManyInputsForSystem[] = "Invalid config. Allow 1 input field a time in split mode.";
inline constexpr char SwitchIsNotArray[] = "Invalid config. Value for key 'switch' is not array.";
inline constexpr char InputIsNotArray[] = "Invalid config. Value for key 'input' is not array.";
inline constexpr char ButtonIsNotArray[] = "Invalid config. Value for key 'button' is not array.";
inline constexpr char DataNotFound[] = "%s: Invalid parameter or data not found: %@";
inline constexpr char UserCanceled[] = "%s: User canceld interactive view: %@";
inline constexpr char Interrupted[] = "%s: The station stopped while waiting for the operator: %@";
inline constexpr char OnMainThread[] =
    "%s: Must not be called on the main thread, where it would wait for itself: %@";
inline constexpr char NoSuchSystem[] = "%s: system index %@ is beyond the station's systems (0 to %ld)";
inline constexpr char NoSystems[] = "%s: system index %@ is beyond the station, which has no systems";
inline constexpr char ReservedLabel[] =
    "Invalid config. Label '%@' is reserved: the record of a panel needs it for itself.";
inline constexpr char NoSlots[] = "The station has no slots: no panel can be drawn.";
inline constexpr char ColumnsDoNotFit[] =
    "Invalid config. Value for key 'column' is %@: a panel takes 1 to %ld columns.";
inline constexpr char RowsDoNotFit[] =
    "The station's %ld groups of %ld slots in %ld columns do not fit on a panel.";
inline constexpr char NotAnInteger[] = "%s: %s must be an integer, got %@";
inline constexpr char OutOfRange[] = "%s: %s %@ is out of range, there are %ld (0 to %ld)";
inline constexpr char OutOfRangeOfNone[] = "%s: %s %@ is out of range, there are none";

// Log lines of more than one place
inline constexpr char InvalidSender[] = "Invalid call for %s from sender: %@";

// Show calls
inline constexpr char ShowCalled[] = "Called: %s, systemIndex: %@, config: %@";
inline constexpr char Named[] = "%s: %@";
inline constexpr char InformativeMessage[] = "start to draw informative message";
inline constexpr char ShowCounts[] = "%s: %d, %d, %d";
inline constexpr char WaitsForTurn[] = "its turn";
inline constexpr char WaitsForOperator[] = "the operator";
inline constexpr char UnknownKey[] = "%s: key '%@' is not known; it is not used";
inline constexpr char UnknownKeyNearly[] = "%s: key '%@' is not known; it is not used. Did you mean '%@'?";
inline constexpr char LengthIsNoNumber[] = "%s: 'length' is %@, which is no number; %ld is used";
inline constexpr char ColorIsUnknown[] =
    "%s: 'messageColor' is %@, which is no colour's name; it is not used";
inline constexpr char AlignmentIsNoNumber[] = "%s: 'messageAlignment' is %@, which is no number; %ld is used";
inline constexpr char AlignmentOutOfRange[] = "%s: 'messageAlignment' is %@, not 0 to 4; the text is centred";

// Conditions
inline constexpr char NoCondition[] = "%s: no conidtion found for: %@";
inline constexpr char FoundCondition[] = "%s: %@ [%ld] conidtion: %@";

// Data and loop mode
inline constexpr char GetData[] = "%s: getData for %@";
inline constexpr char LoopConfigured[] = "%s: viewIdentifier %@ value: %@";
inline constexpr char LoopData[] = "%s: data: %@";

// Panels
inline constexpr char PanelEntered[] =
    "Entered: %s, viewIdentifier: %@. group: %@, slot: %@, enabled: %@, data:%@";
inline constexpr char PanelPlaced[] = "%s: columns: %ld, subViewY: %f, rows: %ld. collections: %@";
inline constexpr char DocumentEnlarged[] = "%s: %@ scrollContentFrame: (%f, %f), (%f, %f)";
inline constexpr char BoxStarted[] = "%s: start to draw view: %@. systemIndex: %@";
inline constexpr char BoxSlot[] = "%s, currentSlot: %@, inputFields: %@";
inline constexpr char BoxFrame[] = "group: %@, slot: %@, box frame size: %f, %f, %f, %f";

// Presentation
inline constexpr char RepresentedObject[] = "representedObject %@";
inline constexpr char MessageCalled[] = "Called: %s, message: %@";
inline constexpr char PanelRemoved[] = "%@ removed with subViews %@";
inline constexpr char ErrorWithoutPanel[] = "%s: no panel to show the message on: %@";

// Groups
inline constexpr char GroupClicked[] = "%s: viewIdentifier %@ button %@ new state: %ld";
inline constexpr char LastGroupKept[] = "%s: Cannot disable all groups, re-enabled current group: %@";
inline constexpr char GroupOff[] = "%s: group set to off: %@";
inline constexpr char NoParentView[] = "%s: %@(%@), no parent view found";
inline constexpr char EnableStatus[] = "%s: enable status: %@";

// Entries and focus
inline constexpr char NoSlotPending[] = "No slot pending input: %@";
inline constexpr char SlotViewNotFound[] = "Slot view not found, or not enabled: %@";
inline constexpr char EntryChecked[] = "%s: viewIdentifier: %@, TextField: %@, %@ = %@.";
inline constexpr char DuplicatedInput[] = "%s: Duplicated input detected: %@ = %@";
inline constexpr char InvalidInput[] = "%s: Invalid input: %@ = %@";
inline constexpr char SavedDataSearched[] = "%s saved data: %@, %@";
inline constexpr char SortedKeys[] = "%@, %@. sortedKeys: %@";
inline constexpr char FieldClicked[] = "%s: %@ notify: %@";
inline constexpr char NoSavedData[] = "%s: %@, %@, no saved data, not enabling data modification";
inline constexpr char EntryRefused[] = "Entry refused: %@ (%@)";
inline constexpr char PanelIsAnswered[] = "its panel was answered already";
inline constexpr char InField[] = "%@, in %@";
inline constexpr char NoSlotWaits[] = "no slot waits for it";
inline constexpr char NoFieldWaits[] = "no field waits for it";
inline constexpr char InputModified[] = "%s: %@, %@, %@";

// Confirmation
inline constexpr char Confirming[] = "%s: %@. responders: %@ ";
inline constexpr char AllSlotsOff[] = "%@: every slot is switched off. Switch one on, or press \"Cancel\".";
inline constexpr char NothingEntered[] = "%@: nothing is entered yet.";
inline constexpr char GroupIsOff[] = "%@ is switched off: switch the group on to confirm.";
inline constexpr char UnknownException[] = "an exception of an unknown type";
inline constexpr char GroupDisabled[] = "%s: Inputs are valid. But group is disabled.";

} // namespace interactive::messages
