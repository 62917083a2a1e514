#include "support/FakeKeyboard.h"

#include <QProcess>
#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <stdexcept>
#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace support {

namespace {

// X key codes stand 8 above Linux ones.
constexpr int xKeyCodeOffset = 8;

} // namespace

FakeKeyboard::FakeKeyboard(const QByteArray &display)
    : m_display(display), m_connection(xcb_connect(display.constData(), nullptr))
{
    if (xcb_connection_has_error(m_connection)) {
        xcb_disconnect(m_connection);
        throw std::runtime_error("no display " + display.toStdString());
    }
}

FakeKeyboard::~FakeKeyboard()
{
    while (!m_held.isEmpty())
        release(m_held.last());
    xcb_disconnect(m_connection);
}

void FakeKeyboard::press(int key)
{
    m_held.append(key);
    send(XCB_KEY_PRESS, key);
}

void FakeKeyboard::release(int key)
{
    m_held.removeOne(key);
    send(XCB_KEY_RELEASE, key);
}

void FakeKeyboard::tap(std::initializer_list<int> keys)
{
    for (const int key : keys)
        press(key);
    std::for_each(std::rbegin(keys), std::rend(keys), [this](int key) { release(key); });
}

bool FakeKeyboard::setLayout(const QString &layout)
{
    return QProcess::execute(QStringLiteral("setxkbmap"),
                             {QStringLiteral("-display"), QString::fromLatin1(m_display),
                              QStringLiteral("-layout"), layout}) == 0;
}

void FakeKeyboard::send(int type, int key)
{
    xcb_test_fake_input(m_connection, static_cast<std::uint8_t>(type),
                        static_cast<std::uint8_t>(key + xKeyCodeOffset), XCB_CURRENT_TIME, XCB_NONE, 0, 0, 0);
    // A round trip: the key has gone through the server when this returns.
    std::free(xcb_get_input_focus_reply(m_connection, xcb_get_input_focus(m_connection), nullptr));
}

} // namespace support
