#pragma once

#include "KeloMenuBar/MenuModel.h"
#include "KeloTheme/ViewWindow.h"

namespace kelo {

/// The menu of a status item in an ordinary window: for desktops that have no place for the item. It follows
/// what happens while it is open, and goes when something was chosen. Main thread only.
class MenuWindow final : public QObject
{
    Q_OBJECT

public:
    /// `build` makes the menu anew. `views` outlives the window; nothing is loaded before it is shown.
    MenuWindow(ViewLoader &views, const QString &title, std::function<Menu()> build);

    /// Brings the window to the front. False when it can't be made.
    bool show();

    /// To be called when the menu may be another one than it was.
    void update();

    /// Null while there is none.
    QWindow *window() const { return m_window.window(); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fill();

    std::function<Menu()> m_build;
    MenuModel m_model{MenuModel::Stops::atTexts};
    ViewWindow m_window;
};

} // namespace kelo
