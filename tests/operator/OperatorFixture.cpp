#include "tests/operator/OperatorFixture.h"

#include "tests/support/Wait.h"

#include <QFile>
#include <QVBoxLayout>

namespace testsupport {

using platform::Box;
using platform::Button;
using platform::Identifier;
using platform::Rect;
using platform::TextField;
using platform::View;

OperatorFixture::OperatorFixture()
{
    makeRoot();
    stopAction.setEnabled(false);
    const auto press = [this](bool runs) {
        pressed.append(QLatin1String(runs ? "Run" : "Stop"));
        runAction.setEnabled(!runs);
        stopAction.setEnabled(runs);
    };
    QObject::connect(&runAction, &QAction::triggered, &context, [press] { press(true); });
    QObject::connect(&stopAction, &QAction::triggered, &context, [press] { press(false); });
    auto *layout = new QVBoxLayout(&window);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(root);
    window.resize(800, 600);
    window.show();
    window.activateWindow();
    EXPECT_TRUE(waitUntil([this] { return window.isActiveWindow(); })) << "the window was not shown";
}

OperatorFixture::~OperatorFixture() = default;

void OperatorFixture::makeRoot()
{
    root = new View(Rect(0, 0, 800, 600));
    root->setIdentifier(Identifier(QStringLiteral("root")));
    scroll = new platform::ScrollView(Rect(0, 0, 800, 540));
    scroll->setHasVerticalScroller(true);
    split = new platform::SplitView(Rect(0, 0, 800, 540));
    scroll->setDocumentView(split);
    root->addSubview(scroll);
}

station::OperatorScript &OperatorFixture::start(const QString &script)
{
    QFile file(path(QStringLiteral("operator.lua")));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(script.toUtf8());
    file.close();
    m_outcome.reset();
    m_script = std::make_unique<station::OperatorScript>(
        file.fileName(), station::OperatorStage{&window, root, &context, {}, &runAction, &stopAction},
        [this](const station::OperatorScript::End &end) {
            m_outcome = Outcome{end.ok, end.message, end.traceback};
        });
    m_script->start();
    return *m_script;
}

OperatorFixture::Outcome OperatorFixture::outcome()
{
    EXPECT_TRUE(waitUntil([this] { return m_outcome.has_value(); })) << "the script did not end";
    m_script.reset();
    return m_outcome.value_or(Outcome());
}

OperatorFixture::Outcome OperatorFixture::run(const QString &script)
{
    start(script);
    return outcome();
}

void OperatorFixture::runs(const QString &script)
{
    const Outcome result = run(script);
    EXPECT_TRUE(result.ok) << result.message.toStdString();
    EXPECT_EQ(result.message, QString());
}

QString OperatorFixture::fails(const QString &script)
{
    const Outcome result = run(script);
    EXPECT_FALSE(result.ok) << "the script came to its end";
    return result.message;
}

View *OperatorFixture::groupPanel(const QString &key, const Rect &frame)
{
    auto *panel = new View(frame);
    panel->setIdentifier(Identifier(key));
    split->addSubview(panel);
    button(panel, {10, 10, 80, 30}, QStringLiteral("OK"), QStringLiteral("Pass"));
    return panel;
}

Box *OperatorFixture::tile(const QString &key, const Rect &frame)
{
    auto *box = new Box(frame);
    box->contentView()->setIdentifier(Identifier(key));
    split->addSubview(box);
    return box;
}

Button *OperatorFixture::button(View *parent, const Rect &frame, const QString &title,
                                const QString &identifier, std::function<void()> action)
{
    auto *made = new Button(frame);
    made->setTitle(title);
    if (!identifier.isEmpty())
        made->setIdentifier(Identifier(identifier));
    made->setTarget(&context, "press:", [this, title, action = std::move(action)](View *) {
        pressed.append(title);
        if (action)
            action();
    });
    parent->addSubview(made);
    return made;
}

Button *OperatorFixture::switchButton(View *parent, const Rect &frame, const QString &identifier)
{
    Button *made = button(parent, frame, QString(), identifier);
    made->setButtonType(Button::Type::Switch);
    made->setState(Button::On);
    return made;
}

TextField *OperatorFixture::field(View *parent, const Rect &frame, const QString &identifier)
{
    auto *made = new TextField(frame);
    made->setIdentifier(Identifier(identifier));
    made->setEditable(true);
    made->setTarget(&context, "enter:", [this, made](View *) { entered.append(made->stringValue()); });
    parent->addSubview(made);
    return made;
}

void OperatorFixture::empty(View *view)
{
    for (View *child : view->subviews())
        child->removeFromSuperview();
}

} // namespace testsupport
