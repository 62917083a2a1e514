#include "KeloTheme/ViewWindow.h"

#include "KeloTheme/Appearance.h"
#include "KeloTheme/ViewLoader.h"
#include "Platform/Activation.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <utility>

namespace kelo {

ViewWindow::ViewWindow(ViewLoader &views, ViewSpec spec, std::chrono::milliseconds keptClosed,
                       QObject *parent)
    : QObject(parent), m_views(views), m_spec(std::move(spec))
{
    m_unused.setSingleShot(true);
    m_unused.setInterval(keptClosed);
    connect(&m_unused, &QTimer::timeout, this, &ViewWindow::release);
}

ViewWindow::~ViewWindow()
{
    release();
}

bool ViewWindow::show(Attention attention)
{
    if (!m_window && !make())
        return false;
    if (m_spec.isModal && !m_window->isVisible())
        interrupt(QGuiApplication::focusWindow());
    m_window->setProperty("_q_showWithoutActivating", attention == Attention::left);
    m_window->setWindowStates(m_window->windowStates() & ~Qt::WindowMinimized);
    if (attention == Attention::taken)
        mivora::showInFront(*m_window);
    else
        m_window->show();
    return true;
}

// Panels are not interrupted: nothing is lost there.
void ViewWindow::interrupt(QWindow *other)
{
    const bool isWindow = other && !other->flags().testFlag(Qt::FramelessWindowHint);
    m_window->setTransientParent(isWindow ? other : nullptr);
    m_window->setModality(isWindow ? Qt::WindowModal : Qt::NonModal);
}

void ViewWindow::close()
{
    if (m_window)
        m_window->hide();
}

void ViewWindow::setTitle(const QString &title)
{
    m_spec.title = title;
    if (m_window)
        m_window->setTitle(title);
}

void ViewWindow::setSize(const QSize &size)
{
    m_spec.size = size;
    if (m_window)
        fit();
}

bool ViewWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == qApp && event->type() == QEvent::Quit)
        m_isQuitting = true;
    if (watched != m_window.get())
        return false;
    switch (event->type()) {
    case QEvent::Close:
        if (!m_isQuitting)
            Q_EMIT closed();
        break;
    case QEvent::Hide:
        m_unused.start();
        break;
    case QEvent::Show:
        m_unused.stop();
        break;
    default:
        break;
    }
    return false;
}

bool ViewWindow::make()
{
    m_window.reset(m_views.createWindow(m_spec));
    m_wanted = {};
    if (!m_window)
        return false;
    fit();
    connect(&m_views.appearance(), &Appearance::changed, m_window.get(), [this] { fit(); });
    m_window->setFlags(m_spec.flags);
    const QPoint middle = m_window->screen()->availableGeometry().center();
    m_window->setPosition(m_position.value_or(middle - QRect(QPoint(), m_window->size()).center()));
    // Of the application: it tells of the end, and of the window as well.
    qApp->installEventFilter(this);
    return true;
}

// Text of another size needs another room. Where the screen has less, the window can be made smaller still,
// and its view scrolls.
void ViewWindow::fit()
{
    constexpr QSize smallest(360, 240);
    // The frame around the window, as far as that can be known before there is one.
    constexpr QSize frame(8, 56);
    const QSize wanted = m_spec.growsWithText ? m_views.scaled(m_spec.size) : m_spec.size;
    if (std::exchange(m_wanted, wanted) == wanted)
        return;
    const QSize size = wanted.boundedTo(m_window->screen()->availableSize() - frame);
    const QSize least = m_spec.minimumSize.isValid() ? m_spec.minimumSize
                        : size == wanted             ? wanted
                                                     : smallest;
    m_window->setMinimumSize(least.boundedTo(size));
    if (!m_spec.minimumSize.isValid())
        m_window->setMaximumSize(wanted);
    m_window->resize(size);
}

void ViewWindow::release()
{
    if (!m_window)
        return;
    qApp->removeEventFilter(this);
    m_position = m_window->position();
    m_window.reset();
    m_views.releaseUnused();
}

} // namespace kelo
