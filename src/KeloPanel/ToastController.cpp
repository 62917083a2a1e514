#include "KeloPanel/ToastController.h"

#include <QCursor>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <algorithm>
#include <chrono>
#include <cmath>

namespace kelo {

namespace {

Q_LOGGING_CATEGORY(log, "kelo.panel")

constexpr int fontPixels = 13;
constexpr int padding = 18;
constexpr int height = 44;
constexpr int widest = 520;
constexpr double cornerRadius = 22;
// The distance from the lower edge of the screen, as a part of its height.
constexpr double elevation = 0.1;
// A message of seven words is read in about two seconds; not everybody looks at once.
constexpr std::chrono::milliseconds displayTime{4000};

// In text of the usual size: the panel grows with it.
QSize sizeFor(const QString &message)
{
    QFont font = QGuiApplication::font();
    font.setPixelSize(fontPixels);
    font.setWeight(QFont::Medium);
    const QFontMetricsF metrics(font);
    const QRectF text =
        metrics.boundingRect({0, 0, widest - 2.0 * padding - 2, 1000}, Qt::TextWordWrap, message);
    return {int(std::ceil(text.width())) + 2 * padding + 2, height + int(text.height() - metrics.height())};
}

} // namespace

ToastController::ToastController(ViewLoader &views, const QDBusConnection &bus)
    : m_controller(views, {.module = QStringLiteral("KeloPanelViews"),
                           .component = QStringLiteral("ToastView"),
                           .properties = {{QStringLiteral("toast"), QVariant::fromValue<QObject *>(this)}},
                           .size = QSize(widest, height),
                           .cornerRadius = cornerRadius,
                           .title = QStringLiteral("Mivora"),
                           .takesInput = false}),
      m_notification(bus)
{
    m_controller.hidesOnResignKey = false;
    m_hideTimer.setSingleShot(true);
    connect(&m_hideTimer, &QTimer::timeout, &m_controller, &FloatingPanelController::hide);
    // A window that the desktop places would take the keyboard, for a message that can be missed.
    connect(&m_notification, &DesktopNotification::failed, this, [this] {
        qCWarning(log).noquote() << "The desktop shows no notifications; this one was:" << m_text;
    });
}

void ToastController::show(const QString &text)
{
    m_controller.hide();
    m_text = text;
    Q_EMIT textChanged();
    if (panelPlatform() == PanelPlatform::notification || !showPanel())
        m_notification.show({.summary = text});
}

bool ToastController::showPanel()
{
    m_controller.panel().setContentSize(sizeFor(m_text));
    const auto area = areaAt(QCursor::pos());
    const PanelPlace place{Qt::BottomEdge, area ? area->height() * elevation : 0};
    if (!m_controller.orderFrontRegardless(place, area))
        return false;
    m_hideTimer.start(displayTime);
    return true;
}

} // namespace kelo
