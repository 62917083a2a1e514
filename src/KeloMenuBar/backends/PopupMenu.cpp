#include "KeloMenuBar/backends/PopupMenu.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPalette>
#include <QScreen>
#include <QTimer>
#include <algorithm>
#include <utility>

namespace kelo {

namespace {

constexpr int edge = 5;
constexpr int indent = 12;
constexpr int itemHeight = 26;
constexpr int separatorHeight = 9;
constexpr int shortcutGap = 32;
constexpr int widest = 480;
// Widths are measured in whole pixels, and a text is not to be cut for the rest.
constexpr int rounding = 4;

// The panel that was clicked may hold the pointer until the button is released.
constexpr int grabAttempts = 20;
constexpr int grabInterval = 25;

// On an arrow, a menu goes on by a line as often as this.
constexpr int scrollInterval = 60;
constexpr int linesPerNotch = 3;
constexpr int notch = 120;

QString shortcutText(const MenuItem &item)
{
    return item.shortcut().toString(QKeySequence::NativeText);
}

// Below and to the right of the point where there is room, else on its other side; never outside the screen.
QPoint placed(QSize size, QPoint point, const QRect &screen)
{
    const int right = screen.right() - size.width() + 1;
    const int y = point.y() + size.height() > screen.bottom() ? point.y() - size.height() : point.y();
    return {std::clamp(point.x(), screen.left(), std::max(screen.left(), right)), std::max(screen.top(), y)};
}

QColor mixed(const QColor &color, qreal alpha)
{
    QColor result = color;
    result.setAlphaF(static_cast<float>(alpha));
    return result;
}

} // namespace

PopupMenu::PopupMenu()
{
    setFlags(Qt::Popup | Qt::FramelessWindowHint);
    m_scrolling.setInterval(scrollInterval);
    connect(&m_scrolling, &QTimer::timeout, this, [this] { scrollBy(m_direction * itemHeight); });
}

QRect PopupMenu::itemRect(int index) const
{
    return m_rects.at(static_cast<std::size_t>(index)).translated(0, -m_scroll.offset());
}

void PopupMenu::open(Menu menu, QPoint position)
{
    m_menu = std::move(menu);
    m_current = -1;
    m_hasMoved = false;
    const QScreen *found = QGuiApplication::screenAt(position);
    const QScreen *screen = found ? found : QGuiApplication::primaryScreen();
    const QRect available = screen->availableGeometry();
    const QSize size = layOut(available.height());
    setGeometry(QRect(placed(size, position, available), size));
    show();
    raise();
    grab(grabAttempts);
}

QSize PopupMenu::layOut(int tallest)
{
    const QFontMetrics metrics(QGuiApplication::font());
    int width = 160;
    for (const MenuItem &item : m_menu.items()) {
        const QString shortcut = shortcutText(item);
        const int extra = shortcut.isEmpty() ? 0 : shortcutGap + metrics.horizontalAdvance(shortcut);
        width =
            std::max(width, metrics.horizontalAdvance(item.text()) + rounding + extra + 2 * (edge + indent));
    }
    width = std::min(width, widest);

    m_rects.clear();
    int y = edge;
    for (const MenuItem &item : m_menu.items()) {
        const int height = item.isSeparator ? separatorHeight : std::max(itemHeight, metrics.height() + 6);
        m_rects.emplace_back(edge, y, width - 2 * edge, height);
        y += height;
    }
    const int height = std::min(y + edge, tallest);
    m_scroll = MenuScroll(y + edge, height);
    return {width, height};
}

void PopupMenu::grab(int attemptsLeft)
{
    if (!isVisible() || (setMouseGrabEnabled(true) && setKeyboardGrabEnabled(true)) || attemptsLeft == 0)
        return;
    QTimer::singleShot(grabInterval, this, [this, attemptsLeft] { grab(attemptsLeft - 1); });
}

void PopupMenu::dismiss()
{
    setMouseGrabEnabled(false);
    setKeyboardGrabEnabled(false);
    m_scrolling.stop();
    hide();
}

void PopupMenu::choose(int index)
{
    dismiss();
    // The menu may be opened again, and filled anew, by what the action does.
    const auto action = m_menu.items()[static_cast<std::size_t>(index)].action;
    if (action)
        action();
}

void PopupMenu::setCurrent(int index)
{
    if (index == m_current)
        return;
    m_current = index;
    update();
}

void PopupMenu::move(int step)
{
    moveFrom(m_current < 0 && step < 0 ? static_cast<int>(m_rects.size()) : m_current, step);
}

void PopupMenu::moveFrom(int index, int step)
{
    const int count = static_cast<int>(m_rects.size());
    for (int tried = 0; tried < count; ++tried) {
        index = (index + step + count) % count;
        if (!canChoose(index))
            continue;
        const QRect &rect = m_rects[static_cast<std::size_t>(index)];
        if (m_scroll.reveal(rect.top() - edge, rect.bottom() + edge))
            update();
        return setCurrent(index);
    }
}

void PopupMenu::scrollBy(int pixels)
{
    if (!m_scroll.scrollBy(pixels))
        return m_scrolling.stop();
    // What was under the pointer has moved away from it.
    m_current = -1;
    update();
}

int PopupMenu::itemAt(QPoint position) const
{
    if (m_scroll.directionAt(position.y()) != 0)
        return -1;
    for (int index = 0; index < static_cast<int>(m_rects.size()); ++index) {
        if (canChoose(index) && itemRect(index).contains(position))
            return index;
    }
    return -1;
}

bool PopupMenu::canChoose(int index) const
{
    const MenuItem &item = m_menu.items()[static_cast<std::size_t>(index)];
    return item.isEnabled && !item.isSeparator;
}

void PopupMenu::exposeEvent(QExposeEvent *event)
{
    QRasterWindow::exposeEvent(event);
    if (isExposed())
        update();
}

void PopupMenu::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint position = event->position().toPoint();
    const bool isWithin = QRect(QPoint(), size()).contains(position);
    m_hasMoved = m_hasMoved || isWithin;
    m_direction = isWithin ? m_scroll.directionAt(position.y()) : 0;
    if (m_direction == 0)
        m_scrolling.stop();
    else if (!m_scrolling.isActive())
        m_scrolling.start();
    setCurrent(itemAt(position));
}

void PopupMenu::wheelEvent(QWheelEvent *event)
{
    scrollBy(-event->angleDelta().y() * linesPerNotch * itemHeight / notch);
    setCurrent(itemAt(event->position().toPoint()));
}

void PopupMenu::mousePressEvent(QMouseEvent *event)
{
    m_hasMoved = true;
    if (!QRect(QPoint(), size()).contains(event->position().toPoint()))
        dismiss();
}

void PopupMenu::mouseReleaseEvent(QMouseEvent *event)
{
    const int index = itemAt(event->position().toPoint());
    if (m_hasMoved && index >= 0)
        choose(index);
}

void PopupMenu::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        return dismiss();
    case Qt::Key_Down:
        return move(1);
    case Qt::Key_Up:
        return move(-1);
    case Qt::Key_Home:
        return moveFrom(-1, 1);
    case Qt::Key_End:
        return moveFrom(0, -1);
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space:
        return m_current >= 0 ? choose(m_current) : void();
    default:
        return chooseByKey(QKeySequence(event->keyCombination()));
    }
}

void PopupMenu::chooseByKey(const QKeySequence &keys)
{
    const auto &items = m_menu.items();
    const auto found = std::find_if(items.begin(), items.end(), [&](const MenuItem &item) {
        return item.isEnabled && item.shortcut() == keys;
    });
    if (found != items.end())
        choose(static_cast<int>(found - items.begin()));
}

void PopupMenu::paintEvent(QPaintEvent *)
{
    const QPalette palette = QGuiApplication::palette();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(QRect(QPoint(), size()), palette.color(QPalette::Base));
    painter.setPen(mixed(palette.color(QPalette::Text), 0.25));
    painter.drawRect(QRectF(0.5, 0.5, width() - 1, height() - 1));
    painter.setFont(QGuiApplication::font());
    painter.save();
    painter.setClipRect(1, m_scroll.top(), width() - 2, m_scroll.bottom() - m_scroll.top());
    for (int index = 0; index < static_cast<int>(m_rects.size()); ++index) {
        if (itemRect(index).intersects(QRect(QPoint(), size())))
            drawItem(painter, index);
    }
    painter.restore();
    if (m_scroll.hasArrowAbove())
        drawArrow(painter, -1);
    if (m_scroll.hasArrowBelow())
        drawArrow(painter, 1);
}

void PopupMenu::drawArrow(QPainter &painter, int direction) const
{
    const qreal half = MenuScroll::arrowHeight / 2.0;
    const QPointF middle(width() / 2.0, direction < 0 ? half : height() - half);
    const QPointF side(5, -2.5 * direction);
    const QPointF tip[] = {middle + side, middle + QPointF(0, 2.5 * direction),
                           middle + QPointF(-side.x(), side.y())};
    painter.setPen(QPen(mixed(QGuiApplication::palette().color(QPalette::Text), 0.6), 1.5));
    painter.drawPolyline(tip, 3);
}

void PopupMenu::drawItem(QPainter &painter, int index) const
{
    const MenuItem &item = m_menu.items()[static_cast<std::size_t>(index)];
    const QPalette palette = QGuiApplication::palette();
    const QRect rect = itemRect(index);
    QColor text = palette.color(QPalette::Text);
    if (item.isSeparator) {
        const QRect line(rect.left(), rect.center().y(), rect.width(), 1);
        return painter.fillRect(line, mixed(text, 0.15));
    }
    if (index == m_current) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette.color(QPalette::Highlight));
        painter.drawRoundedRect(rect, 4, 4);
        text = palette.color(QPalette::HighlightedText);
    }
    painter.setPen(mixed(text, item.isEnabled ? 1 : 0.5));
    const QRect inner = rect.adjusted(indent, 0, -indent, 0);
    const QString shortcut = shortcutText(item);
    const QFontMetrics metrics(painter.font());
    const int room =
        inner.width() - (shortcut.isEmpty() ? 0 : shortcutGap + metrics.horizontalAdvance(shortcut));
    // Marks piled up on a character reach beyond its line.
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    painter.drawText(inner, Qt::AlignLeft | Qt::AlignVCenter,
                     metrics.elidedText(item.text(), Qt::ElideRight, room));
    painter.restore();
    painter.setPen(mixed(text, 0.6));
    painter.drawText(inner, Qt::AlignRight | Qt::AlignVCenter, shortcut);
}

} // namespace kelo
