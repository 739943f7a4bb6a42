#pragma once

#include "platform/Control.h"

#include <QTimer>

#include <atomic>

class QAbstractButton;

namespace platform {

/// A push button, or a check box ("switch"), that sends its action when a person presses and releases it.
///
/// A button never takes the focus by a click, so that the field an operator types into keeps it; Tab reaches
/// it, shows a ring around it (focusring), and then the space bar and Return work it. Any other character
/// belongs to an entry: it goes along the next-responder chain to a field (keys::handOn), and so does a
/// scanner's blank; a scanner's Return or Tab (keys::isScanners) does nothing, so that no scan presses a
/// button. A blank works the button when the time has passed in which a scanner would have sent the next
/// character. A title that does not fit is elided, with the whole title as tool tip. Thread: the main thread,
/// except state().
class Button : public Control
{
    Q_OBJECT
public:
    enum class Type { MomentaryPush = 0, Switch = 3 };
    enum State { Mixed = -1, Off = 0, On = 1 };
    /// The platform's numbers; 2 is the regular square bezel.
    enum class BezelStyle { Rounded = 1, RegularSquare = 2 };

    explicit Button(QWidget *parent = nullptr);
    explicit Button(const Rect &frame);
    Button(const Rect &frame, Type type);

    [[nodiscard]] QString title() const { return m_title; }
    void setTitle(const QString &title);
    [[nodiscard]] Type buttonType() const { return m_type; }
    void setButtonType(Type type);
    [[nodiscard]] BezelStyle bezelStyle() const { return m_bezelStyle; }
    void setBezelStyle(BezelStyle style) { m_bezelStyle = style; }
    /// How assistive technology calls the button; its title when empty.
    [[nodiscard]] QString spokenName() const { return m_spokenName; }
    void setSpokenName(const QString &name);
    [[nodiscard]] bool isBordered() const { return m_bordered; }
    void setBordered(bool bordered);
    /// Thread: any.
    [[nodiscard]] State state() const { return static_cast<State>(m_state.load()); }
    /// Changes the state without sending the action. A switch shows it; a press takes a mixed one to on.
    void setState(State state);

    bool becomeFirstResponder() override;
    [[nodiscard]] bool isFirstResponder() const override;
    [[nodiscard]] QWidget *focusTarget() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void fontChanged() override;
    void layout() override;

private:
    Button(QWidget *parent, Type type);
    void makeInner();
    bool takesKey(QKeyEvent &event);
    void pressByBlanks();
    void handBlanksOn(QKeyEvent &event);
    void clicked();
    void showTitle();
    void showState();
    void showBorder();

    QAbstractButton *m_inner = nullptr;
    QString m_title;
    QString m_spokenName;
    int m_blanks = 0;     ///< How many came that may still turn out to begin a scan.
    QTimer m_blanksMeant; ///< Runs out when they are no scan's.
    Type m_type = Type::MomentaryPush;
    BezelStyle m_bezelStyle = BezelStyle::Rounded;
    bool m_bordered = true;
    std::atomic<int> m_state{Off};
};

} // namespace platform
