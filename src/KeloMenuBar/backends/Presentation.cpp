#include "KeloMenuBar/backends/Presentation.h"

#include "KeloMenuBar/Symbols.h"

#include <QStringList>
#include <algorithm>

namespace kelo {

namespace {

struct KnownHost
{
    QLatin1String name;
    Presentation presentation = Presentation::Square;
};

// By process name, cut to 15 bytes as in /proc.
constexpr KnownHost processes[] = {
    {QLatin1String("gnome-shell"), Presentation::Label},
    {QLatin1String("ayatana-indicat"), Presentation::Label},
    {QLatin1String("mate-panel"), Presentation::Label},
    {QLatin1String("notification-ar"), Presentation::Label},
    {QLatin1String("mate-indicator-"), Presentation::Label},
    {QLatin1String("waybar"), Presentation::Wide},
    {QLatin1String("sfwbar"), Presentation::Label},
    {QLatin1String("xfce4-panel"), Presentation::Square},
};

// Plasma's watcher lives in one of these.
constexpr QLatin1String plasma[] = {QLatin1String("kded5"), QLatin1String("kded6"),
                                    QLatin1String("plasmashell")};

constexpr QLatin1String markupReaders[] = {QLatin1String("waybar"), QLatin1String("sfwbar")};

// By one entry of $XDG_CURRENT_DESKTOP.
constexpr KnownHost desktops[] = {
    {QLatin1String("GNOME"), Presentation::Label},
    {QLatin1String("Unity"), Presentation::Label},
    {QLatin1String("MATE"), Presentation::Label},
};

constexpr KnownHost overrides[] = {
    {QLatin1String("label"), Presentation::Label},
    {QLatin1String("wide"), Presentation::Wide},
    {QLatin1String("square"), Presentation::Square},
};

template<std::size_t size>
std::optional<Presentation> find(const KnownHost (&table)[size], const QString &name)
{
    for (const KnownHost &host : table) {
        if (name == host.name)
            return host.presentation;
    }
    return std::nullopt;
}

std::optional<Presentation> presentationOfDesktop(const QString &desktop)
{
    for (const QString &name : desktop.split(u':')) {
        if (const auto found = find(desktops, name))
            return found;
    }
    return std::nullopt;
}

// The host reserves the room of the guide: with every digit the widest one, the icons beside don't move
// each time that a minute passes.
QString guideFor(QString label)
{
    std::ranges::replace_if(
        label, [](QChar character) { return character.isDigit(); }, QChar(u'0'));
    return label;
}

void setLabel(NotifierProperties &properties, const StatusItemState &state)
{
    const SymbolFiles files = symbolFiles(state.icon);
    properties.iconName = state.isUrgent ? files.urgent : files.symbolic;
    properties.iconThemePath = iconThemePath();
    properties.label = state.title.trimmed();
    properties.labelGuide = guideFor(properties.label);
}

StatusPicture picture(const StatusItemState &state, StatusPicture::Shape shape)
{
    const QString &text = shape == StatusPicture::Shape::Wide ? state.title : state.countdown;
    return {.shape = shape, .symbol = state.icon, .text = text.trimmed(), .isUrgent = state.isUrgent};
}

} // namespace

Presentation presentationFor(const StatusHost &host)
{
    if (const auto known = find(processes, host.process))
        return *known;
    for (const QString &process : host.others) {
        if (const auto known = find(processes, process))
            return *known;
    }
    // Ayatana's service may run beside another watcher; it decides only where the watcher is a stranger.
    if (host.hasAyatanaIndicator)
        return Presentation::Label;
    if (host.process.isEmpty())
        return presentationOfDesktop(host.desktop).value_or(Presentation::Square);
    return Presentation::Square;
}

bool opensRefusedMenu(const StatusHost &host)
{
    return std::ranges::any_of(plasma, [&](QLatin1String process) { return host.process == process; });
}

bool readsMarkup(const StatusHost &host)
{
    return std::ranges::any_of(markupReaders, [&](QLatin1String process) {
        return host.process == process || host.others.contains(process);
    });
}

std::optional<Presentation> presentationOverride()
{
    return find(overrides, qEnvironmentVariable("MIVORA_TRAY"));
}

NotifierProperties notifierProperties(const StatusItemState &state, Presentation presentation)
{
    NotifierProperties properties;
    const QString title = state.title.trimmed();
    properties.title = title.isEmpty() ? state.accessibilityDescription : title;
    // Never NeedsAttention: hosts then paint over the item, or make it blink. Passive ones are not shown at
    // all.
    properties.status = state.isVisible ? QStringLiteral("Active") : QStringLiteral("Passive");
    properties.iconDescription = state.accessibilityDescription;
    properties.toolTip = state.toolTip;
    if (presentation == Presentation::Label)
        setLabel(properties, state);
    else
        properties.picture =
            picture(state, presentation == Presentation::Wide ? StatusPicture::Shape::Wide
                                                              : StatusPicture::Shape::Square);
    return properties;
}

} // namespace kelo
