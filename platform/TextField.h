#pragma once

#include "platform/Control.h"
#include "platform/RefusedEntry.h"
#include "platform/TextAlignment.h"
#include "platform/TextFieldCell.h"

#include <QPointer>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

class QLineEdit;

namespace platform {

class ChoiceList;
class EntryEditor;
struct TextLines;

/// A line of text that can be edited, or a label of one or more lines.
///
/// Editable, it holds a QLineEdit (its field editor) inside the rectangle that its cell names; Return sends
/// the action, and afterwards selects the text that is still there, so that the next entry replaces it. Not
/// editable, it paints its text, word-wrapped when there is room for more than one line, elided with an
/// ellipsis (and a tool tip with the whole text) where it does not fit. A line that is higher than the field
/// is centred in it. A character, Return, Backspace or Delete that arrives at a read-only field that has the
/// focus travels along the next-responder chain to the first editable field that can take the focus; that one
/// gets it and the key, so that no character is lost. All other keys go on to whoever holds the field.
/// Tab goes along the next key views to the first that can take the focus, and as usual where none can; a
/// scanner's Tab (keys::isScanners) does nothing, so that the Return behind it ends the entry.
///
/// With choices an arrow stands inside the frame, and a list drops down by a press on it, by Down, Up or Alt
/// and Down, or when somebody stops typing. The field keeps the focus and all keys meanwhile. Return takes
/// the row that somebody went to since the last character, and the text as it is where nobody did: a scan
/// ends as it does without a list.
///
/// An entry is what a person or scanner types, up to Return. One that is longer than MaximumEntryLength, or
/// holds a control character other than GS (U+001D), is refused whole: the field is emptied and turns red at
/// once, takes no more of it, and at its end calls the refusal handler in place of the action. It is red
/// until the next entry begins, another text (not an empty one) is set, or another background. GS is kept,
/// and shown as U+241D, which therefore counts as GS itself.
///
/// Actions, handlers and whoever is connected to a signal may take the field away.
/// Thread: the main thread. Ownership: the field owns its cell and its editor; the editor goes when the field
/// is made read-only.
class TextField : public Control
{
    Q_OBJECT
public:
    /// The longest entry, in UTF-16 units.
    static constexpr qsizetype MaximumEntryLength = 4096;
    /// Receives the field, which is empty, and what it refused.
    using RefusalHandler = std::function<void(TextField *field, const RefusedEntry &refused)>;

    explicit TextField(QWidget *parent = nullptr);
    explicit TextField(const Rect &frame);
    ~TextField() override;

    [[nodiscard]] QString stringValue() const;
    /// Replaces the text, a begun entry included; the cursor goes to its end. Sends no action.
    void setStringValue(const QString &text);
    /// Whether the field holds, or refuses, something typed that has not been ended with Return, or its list
    /// of choices is open.
    [[nodiscard]] bool hasBegunEntry() const;
    /// Sets who is told of a refused entry, when that has ended or was given up.
    void setRefusalHandler(RefusalHandler handler) { m_refusalHandler = std::move(handler); }

    /// What is shown in grey while there is no text; it is no text itself. A field that is read-only and
    /// switched off does not show it.
    [[nodiscard]] QString placeholder() const { return m_placeholder; }
    void setPlaceholder(const QString &text);
    /// What an editable field offers in its list; none, and no list, when empty.
    [[nodiscard]] QStringList choices() const { return m_choices; }
    void setChoices(const QStringList &choices);
    [[nodiscard]] bool isListOpen() const;
    /// Opens the list, or folds it. Nothing without choices, or where the field does not take the keys.
    void toggleList();
    /// How assistive technology calls the field, and what it says about it besides; the editor's, too.
    void setSpokenName(const QString &name);
    void setSpokenDescription(const QString &description);
    /// What is said before the description for as long as it holds; nothing more when empty.
    void tellAlso(const QString &text);

    [[nodiscard]] bool isEditable() const { return m_editor != nullptr; }
    void setEditable(bool editable);
    [[nodiscard]] bool isBordered() const { return m_bordered; }
    void setBordered(bool bordered);
    [[nodiscard]] bool drawsBackground() const { return m_drawsBackground; }
    void setDrawsBackground(bool draws);
    [[nodiscard]] Color backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const Color &color);
    [[nodiscard]] Color textColor() const { return m_textColor; }
    void setTextColor(const Color &color);
    /// The colour that the text is seen in: textColor(), or the nearest one that can be read on
    /// groundOfText().
    [[nodiscard]] QColor shownTextColor() const;
    /// The opaque colour that is seen behind the text.
    [[nodiscard]] QColor groundOfText() const { return ground(); }
    /// Whether the whole text of a label can be seen.
    [[nodiscard]] bool showsWholeText() const;
    [[nodiscard]] TextAlignment alignment() const { return m_alignment; }
    void setAlignment(TextAlignment alignment);
    /// 0: as many lines as fit.
    [[nodiscard]] int maximumNumberOfLines() const { return m_maximumNumberOfLines; }
    void setMaximumNumberOfLines(int lines);

    [[nodiscard]] TextFieldCell &cell() const { return *m_cell; }
    /// Takes ownership; the field's font goes to the cell. Requires: not null.
    void setCell(std::unique_ptr<TextFieldCell> cell);

    /// Asks for the focus and selects the whole text when the field has it.
    void selectText();
    [[nodiscard]] QString selectedText() const;
    /// The editor while the field is being edited (it is editable and first responder), otherwise null.
    [[nodiscard]] QLineEdit *currentEditor() const;

    /// Selects the text as well, unless the field has the focus and a begun entry already.
    bool becomeFirstResponder() override;
    [[nodiscard]] bool isFirstResponder() const override;
    [[nodiscard]] QWidget *focusTarget() override;

signals:
    /// Sent when Return has ended an entry and the action, or the refusal handler, has run; also when a begun
    /// entry was given up: all of it deleted, another text set, or the field made read-only, hidden, disabled
    /// or removed. The entry is no longer begun then.
    void entryEnded();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void fontChanged() override;
    void layout() override;
    void wasTakenAway() override;
    [[nodiscard]] QColor filling() const override;
    void groundChanged() override;
    /// Scrolls the field into sight when Tab has come to it.
    virtual void comeIntoSight();
    /// Whether a press of the mouse is handled by the field editor; a subclass that decides itself says
    /// false.
    [[nodiscard]] virtual bool editorTakesMouse() const { return true; }
    /// Where a press is for the list, in the widget's coordinates; empty without choices.
    [[nodiscard]] QRectF arrowArea() const;

private:
    void makeEditor();
    void showDescription();
    void dropEditor();
    void styleEditor();
    void endEntry();
    void giveUpEntry();
    void tellRefusal(const RefusedEntry &refused);
    void markRefused();
    void unmarkRefused();
    void textChanged();
    bool takesEditorKey(QKeyEvent &event);
    bool takesTab(const QKeyEvent &event);
    void foldList();
    void narrowList();
    void pick(const QString &choice);
    void takeChosen();
    bool listTakesKey(const QKeyEvent &event);
    [[nodiscard]] ChoiceList *list();
    [[nodiscard]] QString shownText() const;
    [[nodiscard]] QColor colorOfPlaceholder() const;
    [[nodiscard]] bool showsFocus() const;
    void paintArrow(QPainter &painter) const;
    [[nodiscard]] bool hasFrame() const;
    [[nodiscard]] QRectF toWidget(const Rect &rect) const;
    [[nodiscard]] QRectF textArea() const;
    [[nodiscard]] TextLines textLines() const;
    /// Between the upper edge of an area of this height and the text.
    [[nodiscard]] double spaceAbove(const TextLines &text, double height) const;
    void paintFrame(QPainter &painter) const;
    void paintText(QPainter &painter) const;

    std::unique_ptr<TextFieldCell> m_cell;
    EntryEditor *m_editor = nullptr;
    QStringList m_choices;
    QPointer<ChoiceList> m_list; ///< From when it was first asked for; its parent is the window.
    QString m_placeholder;
    QString m_description;
    QString m_toldAlso;
    RefusalHandler m_refusalHandler;
    /// While the field is red for a refused entry: what it was before.
    std::optional<Color> m_colorBeforeRefusal;
    QString m_text; ///< While there is no editor, which holds the text otherwise.
    bool m_bordered = false;
    bool m_drawsBackground = false;
    int m_maximumNumberOfLines = 0;
    Color m_backgroundColor = Color::white();
    Color m_textColor = Color::black();
    TextAlignment m_alignment = TextAlignment::Natural;
};

} // namespace platform
