#include "bench/baseline/BareDialog.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <utility>

namespace baseline {

namespace {

/// Answers as soon as the field has the focus.
class WhenFocused : public QObject
{
public:
    WhenFocused(QLineEdit *field, std::function<void()> answer)
        : m_answer(std::move(answer))
    {
        field->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        // Once: it is told again when the window becomes the active one.
        if (event->type() == QEvent::FocusIn && m_answer)
            QMetaObject::invokeMethod(this, std::exchange(m_answer, nullptr), Qt::QueuedConnection);
        return false;
    }

private:
    std::function<void()> m_answer;
};

} // namespace

QString askByDialog(QWidget *window, const std::function<void(QLineEdit *field, QPushButton *ok)> &answer)
{
    QDialog dialog(window);
    dialog.resize(250, 110);
    QLabel label(QStringLiteral("SN:"), &dialog);
    label.setGeometry(4, 40, 50, 20);
    QLineEdit field(&dialog);
    field.setGeometry(62, 40, 164, 20);
    QPushButton ok(QStringLiteral("OK"), &dialog);
    ok.setGeometry(134, 64, 64, 30);
    ok.setAutoDefault(false);
    QObject::connect(&ok, &QPushButton::clicked, &dialog, &QDialog::accept);
    field.setFocus();
    const WhenFocused whenFocused(&field, [&] { answer(&field, &ok); });
    dialog.exec();
    return field.text();
}

} // namespace baseline
