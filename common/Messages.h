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
inline constexpr char InsideFunction[] =
    "%s: Must not be called inside a function that was handed to a call, which would wait for itself: %@";
inline constexpr char TimeOver[] = "%s: The panel was not answered within its time limit of %@ s: %@";
inline constexpr char NoSuchSystem[] = "%s: system index %@ is beyond the station's systems (0 to %ld)";
inline constexpr char NoSystems[] = "%s: system index %@ is beyond the station, which has no systems";
inline constexpr char ReservedLabel[] =
    "Invalid config. Label '%@' is reserved: the record of a panel needs it for itself.";
inline constexpr char WrongValue[] = "Invalid config. Value for key '%@' is %@: %@.";
inline constexpr char NoSlots[] = "The station has no slots: no panel can be drawn.";
inline constexpr char ColumnsDoNotFit[] =
    "Invalid config. Value for key 'column' is %@: a panel takes 1 to %ld columns.";
inline constexpr char RowsDoNotFit[] =
    "The station's %ld groups of %ld slots in %ld columns do not fit on a panel.";
inline constexpr char NotAnInteger[] = "%s: %s must be an integer, got %@";
inline constexpr char OutOfRange[] = "%s: %s %@ is out of range, there are %ld (0 to %ld)";
inline constexpr char OutOfRangeOfNone[] = "%s: %s %@ is out of range, there are none";

// What is wrong with a value of a configuration, and what would be right
inline constexpr char NeedsInput[] = "nothing is entered on this panel; it goes with 'input'";
inline constexpr char NeedsWaiting[] = "nobody answers a group's message; it goes with a panel that waits";
inline constexpr char MustBeText[] = "must be a text";
inline constexpr char MustBeTrueOrFalse[] = "must be true or false";
inline constexpr char MustBeFunction[] =
    "must be a function (text, slot) that returns true, or false and why";
inline constexpr char MustBeForm[] =
    "must be a regular expression, or a table that has one for a slot or label";
inline constexpr char MustBeScope[] = "must be \"group\", \"station\" or \"run\"";
inline constexpr char MustBeNumberTable[] =
    "must be a table of 'min', 'max', 'decimals' and 'unit', each of which may be left out";
inline constexpr char MustBeLimit[] = "'%@' must be a number, is %@";
inline constexpr char MinAboveMax[] = "'min' must not be greater than 'max'";
inline constexpr char MustBeDecimals[] = "'decimals' must be a whole number from 0 to %ld, is %@";
inline constexpr char MustBeUnit[] = "'unit' must be a text, is %@";
inline constexpr char NoSuchPart[] = "'%@' is none of 'min', 'max', 'decimals' and 'unit'";
inline constexpr char MustBeChoices[] = "must be a list of texts with at least one in it";
inline constexpr char ChoiceIsEmpty[] = "a choice must not be empty";
inline constexpr char ChoiceTwice[] = "'%@' is in it twice";
inline constexpr char ChoiceLength[] = "'%@' does not have the %ld characters that 'length' asks for";
inline constexpr char MustBeDefault[] = "must be a text";
inline constexpr char MustBeDefaults[] = "must be a table of slots, each with a text";
inline constexpr char UnknownSlot[] = "'%@' is no slot of the station";
inline constexpr char UnknownLabel[] = "'%@' is no label that is asked for";
inline constexpr char BrokenForm[] = "not a regular expression: %@, at character %ld of '%@'";
inline constexpr char DefaultIsRefused[] = "'%@' would be refused: %@";
inline constexpr char DefaultTwice[] = "'%@' is given to two slots";
inline constexpr char OneOfThree[] = "cannot be asked for beside '%@'";
inline constexpr char UniqueNeedsText[] = "equal entries are allowed beside '%@'";
inline constexpr char NeedsOkButton[] = "the panel needs an \"OK\" button, which it would press";
inline constexpr char MustBeSeconds[] = "must be a number of seconds, more than 0 and at most %ld";

// Why an entry is refused, in words for the operator
inline constexpr char HasAnotherLength[] = "it has %ld characters instead of %ld";
inline constexpr char HasAnotherForm[] = "it does not have the form that is asked for";
inline constexpr char IsNoNumber[] = "it is no number";
inline constexpr char TooManyDecimals[] = "it has more than %ld decimals";
inline constexpr char NoDecimals[] = "it must be a whole number";
inline constexpr char OutOfLimits[] = "it must be %@";
inline constexpr char RangeBetween[] = "%@ to %@%@";
inline constexpr char RangeAbove[] = "at least %@%@";
inline constexpr char RangeBelow[] = "at most %@%@";
inline constexpr char IsNoChoice[] = "it is none of the choices";
inline constexpr char NothingChosen[] = "nothing is chosen";
inline constexpr char FitsSeveralChoices[] = "it fits %ld of the choices";
inline constexpr char WasGivenBefore[] = "it was given before";
inline constexpr char IsNotValid[] = "the sequence does not take it";
inline constexpr char IsBeingChecked[] = "\"%@\" is being checked ...";

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
inline constexpr char LengthIsTooLong[] =
    "%s: 'length' is %ld, but a field takes up to %ld characters: no entry will do";
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

inline constexpr char TimeLeft[] = "Time left: %ld s";

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
inline constexpr char Refused[] = "\"%@\" is refused: %@";
inline constexpr char RefusedWithHint[] = "%@ (%@)";
inline constexpr char RefusedFor[] = "%@: %@";
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
inline constexpr char PressedBeforeEntry[] =
    "%@: the button was pressed before the entry that is being made. Press it again.";
inline constexpr char GroupIsOff[] = "%@ is switched off: switch the group on to confirm.";
inline constexpr char UnknownException[] = "an exception of an unknown type";
inline constexpr char GroupDisabled[] = "%s: Inputs are valid. But group is disabled.";

} // namespace interactive::messages
