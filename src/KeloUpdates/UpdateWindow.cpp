#include "KeloUpdates/UpdateWindow.h"

namespace kelo {

UpdateWindow::UpdateWindow(ViewLoader &views, const QString &title)
    : m_window(views, {.module = QStringLiteral("KeloUpdatesViews"),
                       .component = QStringLiteral("UpdateView"),
                       .properties = {{QStringLiteral("updates"), QVariant::fromValue<QObject *>(this)}},
                       .size = {440, 220},
                       .minimumSize = {360, 220},
                       .flags = Qt::Dialog,
                       .title = title})
{
    connect(&m_window, &ViewWindow::closed, this, &UpdateWindow::dismiss);
}

bool UpdateWindow::show(const UpdatePage &page, Attention attention)
{
    m_page = page;
    Q_EMIT pageChanged();
    return m_window.show(attention);
}

} // namespace kelo
