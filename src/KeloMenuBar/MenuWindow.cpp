#include "KeloMenuBar/MenuWindow.h"

#include <QGuiApplication>
#include <QScreen>
#include <climits>

namespace kelo {

namespace {

// So much that the frame has room for the title.
constexpr int narrowestWindow = 280;
// Of a menu that is higher than the screen.
constexpr double highestPart = 0.8;

} // namespace

MenuWindow::MenuWindow(ViewLoader &views, const QString &title, std::function<Menu()> build)
    : m_build(std::move(build)),
      m_window(views, {.module = QStringLiteral("KeloMenuBarViews"),
                       .component = QStringLiteral("MenuView"),
                       .properties = {{QStringLiteral("menu"), QVariant::fromValue<QObject *>(&m_model)},
                                      {QStringLiteral("isPopup"), false}},
                       .size = {narrowestWindow, narrowestWindow},
                       .growsWithText = false,
                       .flags = Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint,
                       .title = title})
{
    connect(&m_model, &MenuModel::ended, &m_window, &ViewWindow::close);
}

bool MenuWindow::show()
{
    fill();
    if (!m_window.isVisible())
        m_model.goToFirst();
    if (!m_window.show())
        return false;
    m_window.window()->installEventFilter(this);
    return true;
}

void MenuWindow::update()
{
    if (m_window.isVisible())
        fill();
}

void MenuWindow::fill()
{
    m_model.setMenu(m_build());
    const int highest = int(QGuiApplication::primaryScreen()->availableSize().height() * highestPart);
    m_window.setSize(m_model.size().expandedTo({narrowestWindow, 0}).boundedTo({INT_MAX, highest}));
}

bool MenuWindow::eventFilter(QObject *watched, QEvent *event)
{
    return m_model.filter(static_cast<QWindow &>(*watched), *event);
}

} // namespace kelo
