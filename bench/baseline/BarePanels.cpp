#include "bench/baseline/BarePanels.h"

#include <QCheckBox>

namespace baseline {

namespace {

constexpr int Columns = 6;
constexpr QSize GroupTile(250, 64);
constexpr QSize SlotTile(250, 110);

QFrame *frame(QWidget *parent, const QRect &place)
{
    auto *made = new QFrame(parent);
    made->setGeometry(place);
    return made;
}

QLabel *label(QWidget *parent, const QRect &place, const QString &text)
{
    auto *made = new QLabel(text, parent);
    made->setGeometry(place);
    return made;
}

QPushButton *button(QWidget *parent, const QRect &place, const QString &text)
{
    auto *made = new QPushButton(text, parent);
    made->setGeometry(place);
    return made;
}

QRect tile(int slot, const QSize &size, int top)
{
    return {QPoint(slot % Columns * size.width(), top + slot / Columns * size.height()), size};
}

QFrame *box(QFrame *tile)
{
    QFrame *made = frame(tile, tile->rect());
    made->setAutoFillBackground(true);
    return made;
}

QString slotName(int slot)
{
    return QStringLiteral("S%1").arg(slot + 1);
}

void makeRoom(QWidget *document, int slotCount, const QSize &tileSize)
{
    const int rows = (slotCount + Columns - 1) / Columns;
    document->resize(document->width(), tileSize.height() * rows + 100);
}

void addGroupSlot(BarePanel &panel, int slot, int top, bool hasValue)
{
    QFrame *ground = box(frame(panel.frame, tile(slot, GroupTile, top)));
    label(ground, {81, 4, 50, 20}, slotName(slot));
    if (hasValue) {
        label(ground, {4, 35, 50, 25}, QStringLiteral("SN:"));
        panel.values.push_back(label(ground, {54, 35, 146, 25}, QString()));
    }
    auto *use = new QCheckBox(ground);
    use->setGeometry(139, 2, 30, 30);
    use->setChecked(true);
    panel.boxes.push_back(ground);
}

} // namespace

BarePanel groupPanel(QWidget *parent, int slotCount, bool hasField)
{
    constexpr int HeaderHeight = 27;
    const int rows = (slotCount + Columns - 1) / Columns;
    const int rowTop = HeaderHeight + rows * GroupTile.height();
    BarePanel panel;
    panel.frame = frame(parent, {0, 0, 1580, rowTop + 34});
    panel.frame->hide();
    label(panel.frame, {8, 2, 1560, 25}, QStringLiteral("G1"));
    for (int slot = 0; slot < slotCount; ++slot)
        addGroupSlot(panel, slot, HeaderHeight, hasField);
    if (hasField) {
        panel.field = new QLineEdit(panel.frame);
        panel.field->setGeometry(8, rowTop, 375, 25);
    }
    button(panel.frame, {1308, rowTop, 80, 30}, QStringLiteral("Cancel"));
    button(panel.frame, {1404, rowTop, 80, 30}, QStringLiteral("Clear"));
    panel.ok = button(panel.frame, {1500, rowTop, 80, 30}, QStringLiteral("OK"));
    return panel;
}

BarePanel slotPanel(QWidget *parent, int slot)
{
    BarePanel panel;
    panel.frame = frame(parent, tile(slot, SlotTile, 0));
    panel.frame->hide();
    QFrame *ground = box(panel.frame);
    label(ground, {4, 20, 230, 20}, slotName(slot));
    label(ground, {60, 20, 98, 20}, QStringLiteral("G1"));
    label(ground, {4, 60, 50, 20}, QStringLiteral("SN:"));
    panel.field = new QLineEdit(ground);
    panel.field->setGeometry(62, 40, 164, 20);
    panel.ok = button(ground, {134, 64, 64, 30}, QStringLiteral("OK"));
    panel.boxes.push_back(ground);
    return panel;
}

std::vector<BarePanel> slotPanels(QWidget *parent, int slotCount)
{
    makeRoom(parent, slotCount, SlotTile);
    std::vector<BarePanel> all;
    for (int slot = 0; slot < slotCount; ++slot)
        all.push_back(slotPanel(parent, slot));
    return all;
}

std::vector<BarePanel> groupPanels(QWidget *parent, int slotCount, bool hasField)
{
    makeRoom(parent, slotCount, GroupTile);
    return {groupPanel(parent, slotCount, hasField)};
}

void open(const std::vector<BarePanel> &panels)
{
    for (const BarePanel &panel : panels)
        panel.frame->show();
    if (QLineEdit *field = panels.back().field)
        field->setFocus();
}

void remove(std::vector<BarePanel> &panels)
{
    for (const BarePanel &panel : panels)
        delete panel.frame;
    panels.clear();
}

} // namespace baseline
