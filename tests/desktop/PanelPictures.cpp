// Takes pictures of every state of the Join panel and of the toast, as they are on this display, and puts
// them on one sheet: panel-pictures FILE.png

#include "KeloPanel/ToastController.h"
#include "Translations/InstallTranslations.h"
#include "desktop/PanelUnderTest.h"
#include "support/MeetingFactory.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QPainter>
#include <QRasterWindow>
#include <QScreen>
#include <QThread>
#include <functional>

namespace {

using namespace mivora;

constexpr QSize cell(456, 226);
constexpr int columns = 3;

struct State
{
    std::string title;
    double secondsToStart = 0;
    std::optional<Service> service;
    std::optional<Color> color;
    Qt::LayoutDirection direction = Qt::LeftToRight;
};

const std::vector<State> &states()
{
    static const std::string longTitle =
        "Quarterly planning with design, research, platform and everybody who "
        "wants to know what comes after the release";
    static const std::vector<State> all{
        {"Design review", 300, Service::zoom, Color{0x34, 0xa8, 0x53}},
        {"Stand-up", 20, Service::meet, Color{0x42, 0x85, 0xf4}},
        {"One-on-one with Priya", -180, Service::teams, Color{0x8e, 0x5c, 0xd9}},
        {"Customer call", 60, Service::webex, Color{0xf2, 0x9c, 0x1f}},
        {"Family", 120, Service::facetime, Color{0xe9, 0x4f, 0x8a}},
        {"Book club", 3900, Service::other, std::nullopt},
        {"Lunch at the corner", 240, std::nullopt, Color{0xe5, 0x53, 0x4b}},
        {longTitle, 300, Service::zoom, Color{0x10, 0x9c, 0xa8}},
        {"\xF0\x9F\x9A\x80 Launch party \xF0\x9F\x8E\x89 \xE4\xBC\x9A\xE8\xAD\xB0", 0, Service::meet,
         Color{0xf4, 0xb4, 0x00}},
        {"\xD7\xA4\xD7\x92\xD7\x99\xD7\xA9\xD7\xAA \xD7\xA6\xD7\x95\xD7\x95\xD7\xAA "
         "\xD7\xA9\xD7\x91\xD7\x95\xD7\xA2\xD7\x99\xD7\xAA",
         120, Service::zoom, Color{0x34, 0xa8, 0x53}},
        {"\xD7\xA4\xD7\x92\xD7\x99\xD7\xA9\xD7\xAA \xD7\xA6\xD7\x95\xD7\x95\xD7\xAA", -300, Service::zoom,
         Color{0x34, 0xa8, 0x53}, Qt::RightToLeft},
        {longTitle, 60, std::nullopt, Color{0x10, 0x9c, 0xa8}, Qt::RightToLeft},
        {std::string(300, 'W'), 300, Service::meet, Color{0xe5, 0x53, 0x4b}},
        {"", 300, Service::zoom, Color{0x42, 0x85, 0xf4}},
    };
    return all;
}

// What an everyday desktop looks like behind the panel: a gradient, and the edge of a bright window.
class Wallpaper final : public QRasterWindow
{
    void paintEvent(QPaintEvent *) override
    {
        QPainter painter(this);
        QLinearGradient gradient(0, 0, width(), height());
        gradient.setColorAt(0, QColor(0x5b7fa6));
        gradient.setColorAt(0.5, QColor(0x9a8fb0));
        gradient.setColorAt(1, QColor(0xe0b49a));
        painter.fillRect(QRect(0, 0, width(), height()), gradient);
        painter.fillRect(QRect(0, 120, width() - 320, height()), QColor(0xfdfdfd));
        painter.setPen(QColor(0x333333));
        for (int y = 140; y < height(); y += 18)
            painter.drawText(20, y,
                             QStringLiteral("The quick brown fox jumps over the lazy dog. ").repeated(6));
    }
};

void wait(int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < milliseconds) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        QThread::msleep(5);
    }
}

QImage screenAround(QWindow &window)
{
    const QRect frame = window.geometry();
    QRect area(QPoint(0, 0), cell);
    area.moveCenter(frame.center());
    area.moveLeft(std::min(area.left(), window.screen()->geometry().right() + 1 - area.width()));
    area.moveTop(std::max(area.top(), 0));
    return window.screen()->grabWindow(0, area.x(), area.y(), area.width(), area.height()).toImage();
}

QImage picture(const State &state)
{
    QGuiApplication::setLayoutDirection(state.direction);
    PanelUnderTest test;
    const Timestamp now = at("2026-03-10T09:00:00Z");
    Meeting meeting = makeMeeting(state.title, now + Seconds(state.secondsToStart));
    if (state.service)
        meeting = withLink(meeting, *state.service);
    meeting.calendarColor = state.color;
    test.panel.show(meeting, now);
    wait(350);
    const QImage image = screenAround(*test.window());
    test.panel.hide();
    return image;
}

QImage toastPicture()
{
    PanelUnderTest test;
    kelo::ToastController toast(test.views);
    toast.show(QStringLiteral("Couldn't open Zoom. Link copied."));
    wait(350);
    for (QWindow *window : QGuiApplication::topLevelWindows()) {
        if (window->isVisible() && window->title() == QLatin1String("Mivora"))
            return screenAround(*window);
    }
    return {};
}

QImage sheet(const std::vector<QImage> &pictures)
{
    const QSize size = pictures.front().size();
    const int rows = (int(pictures.size()) + columns - 1) / columns;
    QImage image(size.width() * columns, size.height() * rows, QImage::Format_RGB32);
    image.fill(Qt::gray);
    QPainter painter(&image);
    for (int i = 0; i < int(pictures.size()); ++i) {
        QImage one = pictures[std::size_t(i)];
        one.setDevicePixelRatio(1);
        painter.drawImage(i % columns * size.width(), i / columns * size.height(), one);
    }
    return image;
}

} // namespace

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    mivora::installTranslations();
    Wallpaper wallpaper;
    wallpaper.setFlags(Qt::BypassWindowManagerHint | Qt::WindowStaysOnBottomHint);
    // Compositors step aside for a window that covers all of the screen.
    wallpaper.setGeometry(app.primaryScreen()->geometry().adjusted(0, 0, 0, -1));
    wallpaper.show();
    wallpaper.lower();
    wait(300);
    std::vector<QImage> pictures;
    for (const State &state : states())
        pictures.push_back(picture(state));
    pictures.push_back(toastPicture());
    return sheet(pictures).save(app.arguments().value(1)) ? 0 : 1;
}
