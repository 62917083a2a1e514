#pragma once

#include "KeloMenuBar/StatusPicture.h"

#include <QRasterWindow>
#include <functional>

namespace kelo {

/// The small window that an XEmbed tray takes in.
class TrayWindow final : public QRasterWindow
{
    Q_OBJECT

public:
    enum class Background {
        Transparent,
        /// The tray has no alpha channel: the corners of the picture are cut out of the window instead.
        Cut,
    };

    /// `openMenu` is given the point of the screen that was clicked.
    TrayWindow(Background background, std::function<void(QPoint)> openMenu);

    void setPicture(const StatusPicture &picture);

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    // The largest square in the middle of the window.
    QRect square() const;

    Background m_background = Background::Transparent;
    std::function<void(QPoint)> m_openMenu;
    StatusPicture m_picture;
};

} // namespace kelo
