#include "KeloSparkle/UpdateWindow.h"

#include "KeloTheme/ViewLoader.h"

namespace kelo {

UpdateWindow::UpdateWindow(ViewLoader &views, const QDBusConnection &bus, QString title, QObject *parent)
    : QObject(parent), m_views(views), m_title(std::move(title)), m_notification(bus)
{
}

UpdateWindow::~UpdateWindow()
{
    // Its view must not see this object half gone.
    delete m_closing;
    delete m_window;
}

bool UpdateWindow::makeWindow()
{
    constexpr QSize size(440, 400);
    constexpr QSize smallest(360, 220);
    m_window = m_views.createWindow(
        {.module = QStringLiteral("KeloSparkleViews"),
         .component = QStringLiteral("UpdateView"),
         .properties = {{QStringLiteral("updates"), QVariant::fromValue<QObject *>(this)}},
         .size = m_page.notes.isEmpty() ? smallest : size,
         .kind = ViewKind::ordinary,
         .title = m_title,
         .surface = nullptr});
    if (!m_window)
        return false;
    m_window->setFlags(Qt::Dialog);
    m_window->setMinimumSize(smallest);
    // Only its frame hides it: hide() lets go of the window first.
    connect(m_window, &QWindow::visibleChanged, this, [this](bool isVisible) {
        if (!isVisible)
            dismiss();
    });
    return true;
}

void UpdateWindow::show(const UpdatePage &page, Attention attention)
{
    m_page = page;
    Q_EMIT pageChanged();
    if (!m_window && !makeWindow()) {
        m_notification.show({.summary = page.heading, .body = page.text, .actions = {}, .stays = false});
        return;
    }
    // Notes need room; a window that is large enough stays as the user made it.
    constexpr int heightWithNotes = 400;
    constexpr int widthWithNotes = 440;
    if (!page.notes.isEmpty())
        m_window->resize(m_window->size().expandedTo({widthWithNotes, heightWithNotes}));
    if (attention == Attention::left)
        m_window->setProperty("_q_showWithoutActivating", true);
    m_window->show();
    if (attention == Attention::taken) {
        m_window->raise();
        m_window->requestActivate();
    }
}

void UpdateWindow::update(const UpdatePage &page)
{
    if (m_page == page)
        return;
    m_page = page;
    Q_EMIT pageChanged();
}

void UpdateWindow::hide()
{
    if (!m_window)
        return;
    QWindow *window = m_window;
    m_window.clear();
    // One that was closed before is not in use any more.
    delete m_closing;
    m_closing = window;
    window->disconnect(this);
    window->hide();
    // Not now: the button that was pressed belongs to the window.
    window->deleteLater();
    QMetaObject::invokeMethod(
        this, [this] { m_views.releaseUnused(); }, Qt::QueuedConnection);
}

void UpdateWindow::dismiss()
{
    const bool canCancel = m_page.secondary.action == UpdateAction::cancel;
    Q_EMIT chosen(canCancel ? UpdateAction::cancel : UpdateAction::close);
}

} // namespace kelo
