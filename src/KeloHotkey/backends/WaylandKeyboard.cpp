#include "KeloHotkey/backends/WaylandKeyboard.h"

#include <QGuiApplication>
#include <QLibrary>
#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client-protocol.h>

namespace kelo {

namespace {

// The program doesn't link libwayland: it has to be there only where Qt has loaded it.
template<typename Function> Function ofWayland(const char *name)
{
    return reinterpret_cast<Function>(QLibrary::resolve(QStringLiteral("wayland-client"), 0, name));
}

#define KELO_WAYLAND(function) ofWayland<decltype(&(function))>(#function)

QByteArray contents(int file, std::uint32_t size)
{
    QByteArray text;
    void *shared = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
    if (shared != MAP_FAILED) {
        // Without the zero byte at its end.
        text = QByteArray(static_cast<const char *>(shared), qsizetype(size) - 1);
        munmap(shared, size);
    }
    close(file);
    return text;
}

} // namespace

WaylandKeyboard::WaylandKeyboard(std::function<void()> changed) : m_changed(std::move(changed))
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    const auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    const auto *qt =
        application ? application->nativeInterface<QNativeInterface::QWaylandApplication>() : nullptr;
    // A seat that has never had a keyboard must not be asked for one.
    if (!qt || !qt->keyboard())
        return;
    // On a queue of its own, so that nothing else is answered in between.
    wl_event_queue *queue = KELO_WAYLAND(wl_display_create_queue)(qt->display());
    auto *seat = static_cast<wl_proxy *>(KELO_WAYLAND(wl_proxy_create_wrapper)(qt->seat()));
    KELO_WAYLAND(wl_proxy_set_queue)(seat, queue);
    wl_proxy *keyboard = KELO_WAYLAND(wl_proxy_marshal_flags)(
        seat, WL_SEAT_GET_KEYBOARD, ofWayland<const wl_interface *>("wl_keyboard_interface"),
        KELO_WAYLAND(wl_proxy_get_version)(seat), 0, nullptr);
    KELO_WAYLAND(wl_proxy_add_dispatcher)(keyboard, &handle, this, nullptr);
    KELO_WAYLAND(wl_display_roundtrip_queue)(qt->display(), queue);
    KELO_WAYLAND(wl_proxy_set_queue)(keyboard, nullptr);
    KELO_WAYLAND(wl_proxy_wrapper_destroy)(seat);
    KELO_WAYLAND(wl_event_queue_destroy)(queue);
#endif
}

int WaylandKeyboard::handle(const void *self, void *, std::uint32_t event, const wl_message *,
                            wl_argument *arguments)
{
    auto *keyboard = const_cast<WaylandKeyboard *>(static_cast<const WaylandKeyboard *>(self));
    constexpr std::uint32_t keymapEvent = 0;
    constexpr std::uint32_t modifiersEvent = 4;
    if (event == keymapEvent) {
        keyboard->m_keymap = contents(arguments[1].h, arguments[2].u);
        keyboard->m_changed();
    } else if (event == modifiersEvent && keyboard->m_active != arguments[4].u) {
        keyboard->m_active = arguments[4].u;
        keyboard->m_changed();
    }
    return 0;
}

} // namespace kelo
