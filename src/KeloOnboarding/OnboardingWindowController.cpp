#include "KeloOnboarding/OnboardingWindowController.h"

#include "KeloTheme/GlassSurface.h"
#include "KeloTheme/ViewLoader.h"

#include <QCoreApplication>
#include <QEvent>
#include <QScreen>
#include <utility>

namespace kelo {

OnboardingWindowController::OnboardingWindowController(ViewLoader &views, const QString &title,
                                                       const QSize &size, std::function<void()> onFinish)
    : m_views(views), m_title(title), m_size(size), m_onFinish(std::move(onFinish))
{
}

OnboardingWindowController::~OnboardingWindowController()
{
    if (m_window)
        m_window->hide();
    dropWindow();
}

void OnboardingWindowController::show(std::vector<OnboardingStep> steps, const QString &finishTitle,
                                      int startAt)
{
    const bool isNew = !m_window;
    if (isNew && !makeWindow())
        return;
    m_model->open(std::move(steps), finishTitle, startAt);
    if (isNew)
        placeWindow();
    m_window->show();
    m_window->raise();
    m_window->requestActivate();
}

bool OnboardingWindowController::makeWindow()
{
    auto model = std::make_unique<OnboardingModel>();
    m_window = m_views.createWindow(
        {.module = QStringLiteral("KeloOnboardingViews"),
         .component = QStringLiteral("OnboardingView"),
         .properties = {{QStringLiteral("title"), m_title},
                        {QStringLiteral("model"), QVariant::fromValue<QObject *>(model.get())}},
         .size = m_size,
         .kind = ViewKind::ordinary,
         .title = m_title,
         .surface = nullptr});
    if (!m_window)
        return false;
    // The view was the window's child first, so it goes before the model that it reads.
    m_model = model.release();
    m_model->setParent(m_window);
    m_model->finish = [controller = QPointer(this)] {
        if (controller && controller->m_window)
            controller->m_window->close();
    };
    m_window->installEventFilter(this);
    return true;
}

// Neither to be resized nor to be minimized: a window that is used once.
void OnboardingWindowController::placeWindow()
{
    GlassSurface::configure(*m_window, m_size, m_title);
    m_window->setFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                       Qt::WindowCloseButtonHint);
    if (const QScreen *screen = m_window->screen()) {
        QRect frame(QPoint(0, 0), m_size);
        frame.moveCenter(screen->availableGeometry().center());
        m_window->setPosition(frame.topLeft());
    }
}

bool OnboardingWindowController::eventFilter(QObject *watched, QEvent *event)
{
    // Nothing may follow that needs the controller.
    if (event->type() == QEvent::Close && watched == m_window)
        windowWillClose();
    return false;
}

void OnboardingWindowController::windowWillClose()
{
    dropWindow();
    if (std::exchange(m_finished, true))
        return;
    if (const auto onFinish = m_onFinish)
        onFinish();
}

void OnboardingWindowController::dropWindow()
{
    if (!m_window)
        return;
    m_window->removeEventFilter(this);
    m_model->close();
    QMetaObject::invokeMethod(
        qApp, [window = m_window] { delete window; }, Qt::QueuedConnection);
    m_views.releaseUnusedLater();
    m_window.clear();
    m_model.clear();
}

} // namespace kelo
