#include "KeloHotkey/KeyboardLayout.h"

#include "KeloHotkey/backends/LatinLayout.h"
#include "KeloHotkey/backends/X11Keyboard.h"
#include "Platform/linux/X11Connection.h"

#include <QCoreApplication>
#include <QPointer>
#include <algorithm>
#include <iterator>

namespace kelo::KeyboardLayout {

namespace {

struct FixedName
{
    std::uint16_t keyCode;
    const char16_t *name;
};

constexpr std::uint16_t spaceKey = 49;

// Keys whose name no layout changes.
constexpr FixedName fixedNames[] = {
    {36, u"↩"},   {48, u"⇥"},   {51, u"⌫"},   {53, u"⎋"},    {96, u"F5"},   {97, u"F6"},   {98, u"F7"},
    {99, u"F3"},  {100, u"F8"}, {101, u"F9"}, {103, u"F11"}, {109, u"F10"}, {111, u"F12"}, {117, u"⌦"},
    {118, u"F4"}, {120, u"F2"}, {122, u"F1"}, {123, u"←"},   {124, u"→"},   {125, u"↓"},   {126, u"↑"},
};

/// Keeps the application's layout until the keyboard changes.
class CurrentLayout final : public QObject
{
public:
    explicit CurrentLayout(QObject *application) : QObject(application)
    {
        connect(&keyboard, &X11Keyboard::changed, this, [this] { m_layout.reset(); });
    }

    /// That of the application, made with the first use.
    static CurrentLayout &instance()
    {
        static QPointer<CurrentLayout> current;
        if (!current)
            current = new CurrentLayout(QCoreApplication::instance());
        return *current;
    }

    const LatinLayout &layout()
    {
        if (!m_layout)
            m_layout = mivora::X11Connection::isAvailable()
                           ? LatinLayout::fromDisplay(mivora::X11Connection().get())
                           : LatinLayout::fromNames();
        return *m_layout;
    }

    X11Keyboard keyboard;

private:
    std::optional<LatinLayout> m_layout;
};

} // namespace

std::optional<QString> character(std::uint16_t keyCode)
{
    return CurrentLayout::instance().layout().character(keyCode);
}

QString displayName(std::uint16_t keyCode)
{
    if (keyCode == spaceKey)
        return QCoreApplication::translate("KeyboardLayout", "Space", "the key");
    const auto *fixed = std::ranges::find(fixedNames, keyCode, &FixedName::keyCode);
    if (fixed != std::end(fixedNames))
        return QString::fromUtf16(fixed->name);
    if (const auto typed = character(keyCode))
        return typed->toUpper();
    return QLatin1Char('#') + QString::number(keyCode);
}

std::optional<std::uint16_t> keyCode(const QString &forCharacters)
{
    const QString wanted = forCharacters.toLower();
    for (std::uint16_t code = 0; code <= 127; ++code) {
        const auto typed = character(code);
        if (typed && typed->toLower() == wanted)
            return code;
    }
    return std::nullopt;
}

QString symbolName(std::uint16_t keyCode)
{
    return CurrentLayout::instance().layout().symbolName(keyCode);
}

void onChange(QObject *context, const std::function<void()> &changed)
{
    QObject::connect(&CurrentLayout::instance().keyboard, &X11Keyboard::changed, context, changed);
}

} // namespace kelo::KeyboardLayout
