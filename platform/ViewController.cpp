#include "platform/ViewController.h"

namespace platform {

ViewController::ViewController(QObject *parent)
    : QObject(parent)
{}

ViewController::~ViewController()
{
    // In a window the view belongs to that.
    if (m_view && !m_view->parent())
        delete m_view.data();
}

View *ViewController::view()
{
    if (!m_loaded) {
        // Before the loading, which may ask for the view itself.
        m_loaded = true;
        m_view = loadView();
        viewDidLoad();
    }
    return m_view;
}

} // namespace platform
