#pragma once

#include <QString>

/// The platform names of methods, from which the function table and the bracketed names in log lines are
/// made.
namespace interactive::selectors {

inline constexpr char ShowGroupView[] = "showGroupView:config:error:";
inline constexpr char ShowView[] = "showView:config:error:";
inline constexpr char ShowInteractiveView[] = "showInteractiveView:systemIndex:config:error:";
inline constexpr char GetData[] = "getData:error:";
inline constexpr char GetLoopConfig[] = "getLoopConfig:";
inline constexpr char SetLoop[] = "setLoop:error:";
inline constexpr char IsLoopFinished[] = "isLoopFinished:error:";
inline constexpr char ConfigLoop[] = "configLoop:";
inline constexpr char GetCondition[] = "getCondition:";
inline constexpr char DrawUI[] = "drawUI:inputs:switches:buttons:groupIndex:systemIndex:";
inline constexpr char BgView[] = "bgView:for:";
inline constexpr char ShowError[] = "showError:config:identifier:";
inline constexpr char GroupBtnClicked[] = "groupBtnClicked:";
inline constexpr char GetParentIdentifier[] = "getParentIdentifier:";
inline constexpr char SwitchBtnClicked[] = "switchBtnClicked:";
inline constexpr char CheckInput[] = "checkInput:";
inline constexpr char CheckDuplicatedInput[] = "checkDuplicatedInput:withIdentifier:";
inline constexpr char TextFieldMouseDown[] = "textFieldMouseDown:";
inline constexpr char ModifyInput[] = "modifyInput:";
inline constexpr char ConfirmBtnClicked[] = "confirmBtnClicked:";

/// A method's name as log lines show it: "-[InteractiveView getData:error:]".
[[nodiscard]] QString bracketed(const char *selector);
/// The name of the work that a method hands to another thread, as the compiler of the platform makes it:
/// "__37-[InteractiveView confirmBtnClicked:]_block_invoke", the number being the length of the bracketed
/// name.
[[nodiscard]] QString blockName(const char *selector);

} // namespace interactive::selectors
