#pragma once

#include "KeloPanel/DesktopNotification.h"
#include "KeloSparkle/UpdatePage.h"
#include "KeloTheme/ViewWindow.h"

#include <QObject>
#include <QPointer>

namespace kelo {

/// The window in which everything about updates is said, one page at a time; also what its view shows. Where
/// no window can be made, a desktop notification says it.
class UpdateWindow final : public QObject
{
    Q_OBJECT
    Q_PROPERTY(QString symbol READ symbol NOTIFY pageChanged)
    Q_PROPERTY(QString heading READ heading NOTIFY pageChanged)
    Q_PROPERTY(QString text READ text NOTIFY pageChanged)
    Q_PROPERTY(QString notes READ notes NOTIFY pageChanged)
    Q_PROPERTY(bool isWorking READ isWorking NOTIFY pageChanged)
    Q_PROPERTY(double progress READ progress NOTIFY pageChanged)
    Q_PROPERTY(QString primaryLabel READ primaryLabel NOTIFY pageChanged)
    Q_PROPERTY(QString secondaryLabel READ secondaryLabel NOTIFY pageChanged)

public:
    /// \a views must outlive the window; nothing is loaded before the first page is shown.
    UpdateWindow(ViewLoader &views, const QDBusConnection &bus, QString title, QObject *parent = nullptr);
    ~UpdateWindow() override;

    /// Shows \a page, in the window that is there or in a new one.
    void show(const UpdatePage &page, Attention attention);

    /// Changes the page of a window that is there, and nothing else.
    void update(const UpdatePage &page);

    /// The window goes, without an action.
    void hide();

    bool isVisible() const { return m_window; }

    /// Null when it is not shown.
    QWindow *window() const { return m_window; }

    const UpdatePage &page() const { return m_page; }

    QString symbol() const { return m_page.symbol; }

    QString heading() const { return m_page.heading; }

    QString text() const { return m_page.text; }

    QString notes() const { return m_page.notes; }

    bool isWorking() const { return m_page.progress.has_value(); }

    /// From 0 to 1, or below 0.
    double progress() const { return m_page.progress.value_or(0); }

    QString primaryLabel() const { return m_page.primary.label; }

    QString secondaryLabel() const { return m_page.secondary.label; }

    Q_INVOKABLE void pressPrimary() { Q_EMIT chosen(m_page.primary.action); }

    Q_INVOKABLE void pressSecondary() { Q_EMIT chosen(m_page.secondary.action); }

    /// The window is closed by its frame or by Escape: Cancel where that is offered.
    Q_INVOKABLE void dismiss();

Q_SIGNALS:
    void pageChanged();
    void chosen(kelo::UpdateAction action);

private:
    bool makeWindow();

    ViewLoader &m_views;
    QString m_title;
    DesktopNotification m_notification;
    UpdatePage m_page;
    QPointer<QWindow> m_window;
    /// Hidden, and deleted by the event loop.
    QPointer<QWindow> m_closing;
};

} // namespace kelo
