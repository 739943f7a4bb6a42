#pragma once

#include "kovan/KovanUIExtension/KVKExtensionGuidanceRelay.h"
#include "station/instruction/GuidanceLoader.h"
#include "station/instruction/PaneMemory.h"

#include <QCache>
#include <QSet>
#include <QTimer>
#include <QWidget>

class QScrollArea;
class QToolButton;

namespace station {

class ElidedLabel;
class InstructionText;
class PictureLabel;

/// Shows the picture and the text of the panel that the operator is at. It can be folded to a strip, zoomed
/// (by its buttons, and by the wheel with Ctrl), and is not in use while no panel has anything to show.
///
/// Pictures are read on a thread of their own. What is wrong with one stands in its place, and once in the
/// log. Nothing in the pane takes the focus. Thread: the main thread. Requires: platform::MainQueue is
/// attached.
class InstructionPane : public QWidget
{
    Q_OBJECT
public:
    static constexpr int FoldedWidth = 36;

    explicit InstructionPane(QWidget *parent = nullptr);
    ~InstructionPane() override;

    /// Folders, besides a sequence's own, that pictures may lie in.
    void setImageFolders(const QStringList &folders) { m_folders = folders; }
    /// Takes width and fold from the file, and keeps them there from now on.
    void rememberIn(const QString &file);

    /// A panel with guidance can be seen, or cannot any more.
    void setOffered(const KVKGuidancePointer &guidance, bool isOffered);
    /// The operator is at the panel of this one, or is not any more.
    void setCurrent(const KVKGuidancePointer &guidance, bool isCurrent);

    /// Whether there is anything to show; it stays so for a moment when there is not any more, since the next
    /// call's panel may be on its way.
    [[nodiscard]] bool isInUse() const { return m_inUse; }
    /// The width that a person has chosen, or that of the strip.
    [[nodiscard]] int wantedWidth() const;
    /// A person has chosen another width; nothing happens while it is folded.
    void setChosenWidth(int width);
    [[nodiscard]] bool isFolded() const { return m_memory.isFolded(); }
    void setFolded(bool folded);
    [[nodiscard]] double zoom() const { return m_zoom; }
    /// 1 shows a picture as wide as the pane; the factor is kept within limits.
    void setZoom(double zoom);

    /// What Tab goes through, in that order; the last is what is scrolled.
    [[nodiscard]] QWidgetList controls() const;
    [[nodiscard]] PictureLabel *picture() const { return m_picture; }
    [[nodiscard]] InstructionText *text() const { return m_text; }
    [[nodiscard]] QString caption() const;

    bool eventFilter(QObject *watched, QEvent *event) override;

signals:
    /// isInUse() or wantedWidth() has another answer, not by setChosenWidth().
    void roomChanged();

private:
    void makeHeader();
    void makeBody();
    QToolButton *makeButton(const QString &sign, const QString &name, const QString &objectName);
    void setInUse(bool inUse);
    void showFold();
    void display(const KVKGuidancePointer &guidance);
    void loaded(const KVKGuidancePointer &guidance, const LoadedGuidance &what);
    void logProblems(const KVKGuidance &guidance, const LoadedGuidance &what) const;
    void fit();

    PaneMemory m_memory;
    QStringList m_folders;
    QSet<KVKGuidancePointer::element_type *> m_offered;
    QSet<KVKGuidancePointer::element_type *> m_logged; ///< Those whose problems the log has.
    /// The last few that were read: a panel may be looked at again.
    QCache<KVKGuidancePointer::element_type *, LoadedGuidance> m_read;
    KVKGuidancePointer m_current;
    double m_zoom = 1.0;
    bool m_inUse = false;
    QTimer m_leaves; ///< Runs out when the pane is to go.

    ElidedLabel *m_caption = nullptr;
    QList<QToolButton *> m_zoomButtons;
    QToolButton *m_fold = nullptr;
    QScrollArea *m_scroll = nullptr;
    PictureLabel *m_picture = nullptr;
    InstructionText *m_text = nullptr;
    GuidanceLoader m_loader;
};

} // namespace station
