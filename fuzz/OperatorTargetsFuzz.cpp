#include "platform/Box.h"
#include "platform/Button.h"
#include "platform/SplitView.h"
#include "platform/TextField.h"
#include "station/operator/ClickTarget.h"
#include "station/operator/LuaArguments.h"
#include "station/operator/OperatorFailure.h"
#include "station/operator/Panels.h"

#include <lua.hpp>

#include "fuzz/Target.h"

using platform::Button;
using platform::Identifier;
using platform::View;
using station::ClickTarget;

namespace {

using fuzz::Input;
using fuzz::must;
using State = std::unique_ptr<lua_State, decltype(&lua_close)>;

const QStringList Names{"0",      "1",         "G1",   "G1-group", "G1-S1", "0-S1",
                        "0-0-S1", "G1-101-S1", "Pass", "OK",       "S1"};

View *viewFrom(Input &input, View *parent)
{
    switch (input.below(5)) {
    case 0: {
        auto *button = std::make_unique<Button>(parent).release();
        button->setTitle(input.textLike({"OK", "Cancel", "Pass"}));
        button->setButtonType(input.truth() ? Button::Type::Switch : Button::Type::MomentaryPush);
        return button;
    }
    case 1:
        return std::make_unique<platform::TextField>(parent).release();
    case 2:
        return std::make_unique<platform::Box>(parent).release();
    case 3:
        return std::make_unique<platform::SplitView>(parent).release();
    default:
        return std::make_unique<View>(parent).release();
    }
}

/// Views as a window may have them, panels among them.
void grow(Input &input, View *parent, int depth)
{
    constexpr int Deepest = 5;
    for (int left = input.below(depth < Deepest ? 5 : 1); left > 0; --left) {
        View *view = viewFrom(input, parent);
        parent->addSubview(view);
        const auto *box = qobject_cast<platform::Box *>(view);
        View *named = box ? box->contentView() : view;
        if (input.below(4) != 0)
            named->setIdentifier(Identifier(input.textLike(Names)));
        view->setHidden(input.below(4) == 0);
        if (!qobject_cast<platform::Control *>(view))
            grow(input, named, depth + 1);
    }
}

void leadsBack(View *root)
{
    for (View *view : station::treeOrder(root)) {
        const std::optional<ClickTarget> target = station::targetOf(root, view);
        if (target)
            must(station::findTarget(root, *target) == view, "a view is found by the target that names it",
                 target->description());
    }
}

void isFoundOrRefused(View *root, const ClickTarget &target)
{
    // A zero is made visible where it would end a failure's text.
    const QString described = target.description().replace(QChar(0), QChar(0x2400));
    must(target.description().contains(target.name), "a target is described by its name", described);
    try {
        View *found = station::findTarget(root, target);
        must(found && station::treeOrder(root).contains(found), "a target is found in the tree", described);
        if (target.kind == ClickTarget::Kind::Identifier)
            must(found->identifier().text() == target.name, "a bare identifier finds its view", described);
        if (target.kind == ClickTarget::Kind::Title)
            must(qobject_cast<Button *>(found)->title() == target.name, "a title finds its button",
                 described);
        if (target.kind != ClickTarget::Kind::Identifier)
            must(station::panelAround(found)->identifier().text() == target.panel, "it lies in its panel",
                 described);
    } catch (const station::OperatorFailure &failure) {
        must(QString::fromUtf8(failure.what()).contains(described), "a failure names the target",
             failure.what());
    }
}

void pushText(lua_State *state, Input &input)
{
    switch (input.below(5)) {
    case 0:
        return lua_pushinteger(state, input.integer());
    case 1:
        return lua_pushnumber(state, input.decimal());
    case 2:
        return lua_pushboolean(state, 1);
    default: {
        const QByteArray text = input.truth() ? input.textLike(Names).toUtf8() : input.someBytes();
        lua_pushlstring(state, text.constData(), static_cast<std::size_t>(text.size()));
    }
    }
}

/// What a script may write as a target, right or wrong.
void pushTarget(lua_State *state, Input &input)
{
    if (input.below(4) == 0)
        return pushText(state, input);
    lua_newtable(state);
    const QStringList keys{"panel", "title", "slot", "switch"};
    if (input.below(8) != 0) {
        pushText(state, input);
        lua_setfield(state, -2, "panel");
    }
    for (int left = input.below(4); left > 0; --left) {
        pushText(state, input);
        const QByteArray key = input.textLike(keys).toUtf8();
        lua_setfield(state, -2, key.constData());
    }
}

std::optional<ClickTarget> targetOnTop(lua_State *state)
{
    const int top = lua_gettop(state);
    std::optional<ClickTarget> target;
    const bool isText = lua_type(state, top) == LUA_TSTRING || lua_type(state, top) == LUA_TNUMBER;
    try {
        target = station::LuaArguments(state, "click").target(top);
        if (lua_type(state, top) == LUA_TNUMBER) {
            must(target->name == QString::fromUtf8(luaL_tolstring(state, top, nullptr)),
                 "a number is what Lua writes", target->name);
            lua_pop(state, 1);
        }
        must((target->kind == ClickTarget::Kind::Identifier) == isText, "a text is an identifier");
        must(isText || lua_istable(state, top), "only a text or a table is a target");
    } catch (const station::OperatorFailure &failure) {
        must(QByteArray(failure.what()).startsWith("click: "), "a failure names the function",
             failure.what());
        must(!isText, "every text is a target");
    }
    must(lua_gettop(state) == top, "the stack is left as it was");
    return target;
}

class OperatorTargetsTarget : public fuzz::Target
{
public:
    void feed(Input input) override
    {
        const State state(luaL_newstate(), &lua_close);
        QList<ClickTarget> targets;
        for (int i = 0; i < 3; ++i) {
            pushTarget(state.get(), input);
            if (const auto target = targetOnTop(state.get()))
                targets.append(*target);
        }
        View root;
        root.setIdentifier(Identifier(QStringLiteral("root")));
        if (input.truth())
            root.show();
        grow(input, &root, 0);
        leadsBack(&root);
        for (const ClickTarget &target : targets)
            isFoundOrRefused(&root, target);
    }
};

} // namespace

std::unique_ptr<fuzz::Target> fuzz::makeTarget()
{
    return std::make_unique<OperatorTargetsTarget>();
}
