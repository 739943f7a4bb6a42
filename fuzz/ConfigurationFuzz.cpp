#include "kovan/KovanLogging/KVKLogging.h"
#include "kovan/KovanUIExtension/KVKConfigEngine.h"
#include "layout/PanelPlan.h"
#include "platform/Callback.h"
#include "platform/SplitView.h"
#include "plugin/AskConfiguration.h"
#include "plugin/CallCheck.h"
#include "plugin/Configuration.h"
#include "plugin/InteractiveView.h"
#include "plugin/Rooms.h"
#include "plugin/Wanted.h"

#include <QCoreApplication>
#include <QEvent>
#include <QVBoxLayout>
#include <QWidget>

#include <cmath>

#include "common/ConfigValues.h"
#include "common/Identifiers.h"
#include "fuzz/ShowCallTrial.h"
#include "fuzz/Target.h"
#include "fuzz/Values.h"

using platform::Array;
using platform::Dictionary;
using platform::Value;

namespace {

using namespace interactive;
using fuzz::Input;
using fuzz::must;

const QStringList Groups{"G1", "G2"};
const QStringList Slots{"S1", "S2", "S3", "S4"};
const QStringList Keys{config::Input,
                       config::Switch,
                       config::Button,
                       config::Length,
                       config::Message,
                       config::Label,
                       config::Title,
                       config::Column,
                       config::DrawShadow,
                       config::MessageFont,
                       config::BackgroundAlpha,
                       config::Pattern,
                       config::Hint,
                       config::MessageColor,
                       config::Validate,
                       config::Unique,
                       config::Number,
                       config::Choices,
                       config::Default,
                       config::Placeholder,
                       config::AutoConfirm,
                       config::TimeLimit,
                       config::Image,
                       config::Instruction,
                       config::MessageAlignment};

/// A sequence's function, which accepts everything.
class AcceptsAll : public platform::Callback
{
public:
    [[nodiscard]] Array call(const Array &) override { return {true}; }
};

Value textFrom(Input &input)
{
    return input.textLike({"", "SN", "OK", "Cancel", "1", "3.5", "[A-Z]+", "[A", "group", "run", "station",
                           "red", "#12345678", "<b>x</b>", "%d %@", "picture.png"});
}

Value labelsFrom(Input &input)
{
    Array labels;
    for (int left = input.below(7); left > 0; --left)
        labels.append(input.textLike(Slots));
    return labels;
}

Value numberRuleFrom(Input &input)
{
    Dictionary rule;
    for (int left = input.below(4); left > 0; --left) {
        const QString key = input.textLike({"min", "max", "decimals"});
        rule.insert(key, input.truth() ? Value(qlonglong{input.integer()}) : Value(input.decimal()));
    }
    return rule;
}

Value defaultsFrom(Input &input)
{
    Dictionary defaults;
    for (int left = input.below(4); left > 0; --left) {
        const QString slot = input.textLike(Slots);
        defaults.insert(slot, textFrom(input));
    }
    return defaults;
}

/// A value that the key may take, or now and then any other.
Value valueFor(const QString &key, Input &input)
{
    if (input.below(8) == 0)
        return fuzz::valueFrom(input, 3);
    if (key == config::Input || key == config::Switch)
        return labelsFrom(input);
    if (key == config::Button || key == config::Choices) {
        Array texts;
        for (int left = input.below(6); left > 0; --left)
            texts.append(textFrom(input));
        return texts;
    }
    if (key == config::Number && input.truth())
        return numberRuleFrom(input);
    if (key == config::Default && input.truth())
        return defaultsFrom(input);
    if (key == config::Validate)
        return Value::fromValue(std::shared_ptr<platform::Callback>(std::make_shared<AcceptsAll>()));
    switch (input.below(4)) {
    case 0:
        return qlonglong{input.integer()};
    case 1:
        return input.decimal();
    case 2:
        return input.truth();
    default:
        return textFrom(input);
    }
}

/// A table of a sequence holds no nothing: to set a key to nil is to have none.
Value withoutNothing(const Value &value)
{
    if (platform::isArray(value)) {
        Array list;
        for (const Value &element : value.toList()) {
            if (element.isValid())
                list.append(withoutNothing(element));
        }
        return list;
    }
    if (!platform::isDictionary(value))
        return value;
    Dictionary dictionary;
    const Dictionary given = value.toMap();
    for (auto entry = given.cbegin(); entry != given.cend(); ++entry) {
        if (entry.value().isValid())
            dictionary.insert(entry.key(), withoutNothing(entry.value()));
    }
    return dictionary;
}

Dictionary configFrom(Input &input)
{
    Dictionary config;
    for (int left = input.below(9); left > 0; --left) {
        const QString key = input.textLike(Keys);
        config.insert(key, valueFor(key, input));
    }
    return withoutNothing(config).toMap();
}

/// What the rules say of a call, as the call asks them.
struct Judgement
{
    Wanted wanted;
    AskReading reading;
    std::optional<Refusal> refusal;
};

Judgement judgementOf(const Dictionary &config, bool forGroup, const StationMap &station)
{
    Judgement judgement{wantedBy(config), {}, {}};
    judgement.reading = readAskRules(config, askContextOf(config, judgement.wanted, forGroup), station);
    if (!isInformative(config, forGroup))
        judgement.refusal =
            refusalOf(config, forGroup, judgement.wanted.inputs, judgement.wanted.switches, station);
    if (!judgement.refusal)
        judgement.refusal = judgement.reading.refusal;
    return judgement;
}

bool isFinite(const platform::Rect &frame)
{
    return std::isfinite(frame.x()) && std::isfinite(frame.y()) && std::isfinite(frame.width()) &&
           std::isfinite(frame.height());
}

void haveFrames(const platform::View *view)
{
    must(isFinite(view->frame()), "every view has a frame", view->identifier().text());
    for (const platform::View *child : view->subviews())
        haveFrames(child);
}

class ConfigurationTarget : public fuzz::Target
{
public:
    ConfigurationTarget()
    {
        Array groups;
        Array slotNames;
        for (const QString &group : Groups) {
            for (const QString &slot : Slots) {
                groups.append(group);
                slotNames.append(slot);
            }
        }
        KVKConfigEngine::sharedConfigEngine()->setSystemIndexToGroupMapping(groups);
        KVKConfigEngine::sharedConfigEngine()->setSystemIndexToSlotMapping(slotNames);
        m_plugin = std::make_unique<InteractiveView>();
        m_window = std::make_unique<QWidget>();
        m_window->resize(1280, 800);
        auto layout = std::make_unique<QVBoxLayout>(m_window.get());
        layout.release()->addWidget(m_plugin->view());
        // Nobody looks at it, and painting would take longer than all else.
        m_window->setUpdatesEnabled(false);
        m_window->show();
        QCoreApplication::processEvents();
        m_look = m_plugin->rooms().settings.look();
        m_sink = KVKLogGetProxy()->addSink([this](const KVKLogProxy::Line &line) {
            if (line.level == KVKLogLevel::Error)
                m_lastError = line.message;
        });
    }

    ~ConfigurationTarget() override
    {
        KVKLogGetProxy()->removeSink(m_sink);
        m_plugin.reset();
        m_window.reset();
    }

    void feed(Input input) override
    {
        const bool forGroup = input.truth();
        const int number =
            input.below(static_cast<int>(forGroup ? Groups.size() : Groups.size() * Slots.size()));
        const int trial = input.below(8);
        const Dictionary config = configFrom(input);
        Rooms &rooms = m_plugin->rooms();
        // Nothing carries over from one input to the next.
        rooms.settings.setColumns(0);
        rooms.settings.setLook(m_look);
        judgeOnly(config, forGroup, number);
        const PanelSubject subject = forGroup ? PanelSubject::of(number, {}, rooms.station, rooms.waits)
                                              : PanelSubject::of({}, number, rooms.station, rooms.waits);
        const Judgement judgement = judgementOf(config, forGroup, rooms.station);
        // A whole call has two threads meet, which takes longer than the drawing alone.
        if (trial == 0)
            callWhole(config, forGroup, number, judgement);
        else
            draw(config, subject, judgement);
        tidy(subject);
    }

private:
    /// The rules say the same each time, leave everything as it is, and so says who looks at a call
    /// beforehand.
    void judgeOnly(const Dictionary &config, bool forGroup, int number)
    {
        Rooms &rooms = m_plugin->rooms();
        const qsizetype panels = rooms.views.panels().size();
        const platform::Dictionary records = rooms.records.all();
        const Judgement first = judgementOf(config, forGroup, rooms.station);
        const Judgement second = judgementOf(config, forGroup, rooms.station);
        must(first.refusal == second.refusal, "the rules say the same each time",
             platform::description(config));
        const QStringList doubts = doubtsAbout(config, QStringLiteral("[it]"));
        for (const QString &doubt : doubts)
            must(doubt.startsWith(QStringLiteral("[it]")), "a doubt names its method", doubt);
        const QString function = forGroup ? QStringLiteral("showGroupView") : QStringLiteral("showView");
        const KVKCallReport report = reportOnCall(function, {number, config}, rooms.station);
        const bool isRefused = first.refusal || !first.wanted.wrongType.isEmpty();
        must(!isRefused || !report.problems.isEmpty(), "what a call refuses is told beforehand",
             platform::description(config));
        must(rooms.views.panels().size() == panels && rooms.records.all() == records,
             "the rules draw nothing");
    }

    /// What the rules found good is drawn without a complaint.
    void draw(const Dictionary &config, const PanelSubject &subject, const Judgement &judgement)
    {
        Rooms &rooms = m_plugin->rooms();
        if (judgement.refusal || !judgement.wanted.wrongType.isEmpty() ||
            !rooms.builder.panelProblem(config).isEmpty())
            return;
        const Wanted &wanted = judgement.wanted;
        const QString key = subject.panelKey.text();
        const auto rules = std::make_shared<const AskRules>(judgement.reading.rules);
        rooms.records.start(key, config::integer(config::Length, config), {});
        rooms.rules.put(key, rules);
        m_lastError.clear();
        const bool switchesOnly = wanted.switchCount > 0 && wanted.inputCount == 0;
        static_cast<void>(
            rooms.builder.drawUI({config, (switchesOnly ? wanted.switches : wanted.inputs).toList(),
                                  wanted.switches.toList(), wanted.buttons, subject, rules}));
        must(m_lastError.isEmpty(), "what was found good is drawn without an error", m_lastError);
        must(!rooms.views.panels().isEmpty(), "a panel stands there", platform::description(config));
        haveFrames(m_plugin->view());
    }

    /// The call as a sequence makes it: it comes back, refused for the reason that the rules give, or not.
    void callWhole(const Dictionary &config, bool forGroup, int number, const Judgement &judgement)
    {
        const bool isRefused = judgement.refusal && judgement.wanted.wrongType.isEmpty();
        const fuzz::ShowCallTrial trial(*m_plugin, forGroup, number, config,
                                        isRefused ? fuzz::ShowCallTrial::End::Press
                                                  : fuzz::ShowCallTrial::End::Interruption);
        const QString said = platform::description(config) + '\n' + trial.error().localizedDescription;
        must(trial.hasEnded(), "every call comes back", said);
        if (!isRefused)
            return;
        must(!trial.result().isValid(), "a refused call has no answer", said);
        must(trial.error().code == judgement.refusal->code, "a call is refused for the rules' reason", said);
    }

    void tidy(const PanelSubject &subject)
    {
        Rooms &rooms = m_plugin->rooms();
        const QString key = subject.panelKey.text();
        rooms.views.resetUI(subject.panelKey);
        rooms.document.fit();
        rooms.rules.remove(key);
        rooms.records.forget(key);
        rooms.records.forgetAllAnswers();
        rooms.slotStates.forget(key);
        rooms.focus.panelGone(subject.panelKey);
        rooms.guidance.panelGone(key);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
    }

    std::unique_ptr<InteractiveView> m_plugin;
    std::unique_ptr<QWidget> m_window;
    PanelLook m_look;
    KVKLogProxy::SinkId m_sink = 0;
    QString m_lastError;
};

} // namespace

std::unique_ptr<fuzz::Target> fuzz::makeTarget()
{
    return std::make_unique<ConfigurationTarget>();
}
