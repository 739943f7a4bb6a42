#pragma once

#include "platform/View.h"

#include <QObject>

namespace platform {

/// An object that owns a view and loads it when it is first asked for.
///
/// Thread: the main thread. Ownership: the controller owns its view until a parent widget takes it; a view
/// that went with its parent is gone for the controller too.
class ViewController : public QObject
{
    Q_OBJECT
public:
    explicit ViewController(QObject *parent = nullptr);
    ~ViewController() override;

    /// The view, loaded and set up on the first call.
    [[nodiscard]] View *view();
    [[nodiscard]] bool isViewLoaded() const { return m_loaded; }

protected:
    /// Makes the view from its interface file and returns it.
    [[nodiscard]] virtual View *loadView() = 0;
    /// Called once, after loadView().
    virtual void viewDidLoad() {}

private:
    QPointer<View> m_view;
    bool m_loaded = false;
};

} // namespace platform
