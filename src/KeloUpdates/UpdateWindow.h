#pragma once

#include "KeloTheme/ViewWindow.h"
#include "KeloUpdates/UpdatePage.h"

namespace kelo {

/// The window in which everything about updates is said, one page at a time; also what its view shows.
class UpdateWindow final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(kelo::UpdatePage page READ page NOTIFY pageChanged)

public:
    /// `views` must outlive the window; nothing is loaded before the first page is shown.
    UpdateWindow(ViewLoader &views, const QString &title);

    /// Shows `page`, in the window that is there or in a new one. False when it can't be made.
    bool show(const UpdatePage &page, Attention attention);

    /// Closes the window, without an action.
    void close() { m_window.close(); }

    bool isVisible() const { return m_window.isVisible(); }

    /// Null when it is not shown.
    QWindow *window() const { return m_window.window(); }

    const UpdatePage &page() const { return m_page; }

    Q_INVOKABLE void pressPrimary() { Q_EMIT chosen(m_page.primary); }

    Q_INVOKABLE void pressSecondary() { Q_EMIT chosen(m_page.secondary); }

    /// The window is closed by its frame or by Escape.
    Q_INVOKABLE void dismiss() { Q_EMIT chosen(UpdateAction::close); }

Q_SIGNALS:
    void pageChanged();
    void chosen(kelo::UpdateAction action);

private:
    UpdatePage m_page;
    ViewWindow m_window;
};

} // namespace kelo
