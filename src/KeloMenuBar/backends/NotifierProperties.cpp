#include "KeloMenuBar/backends/NotifierProperties.h"

#include "KeloMenuBar/Symbols.h"

namespace kelo {

namespace {

// The host reserves the room of the guide: with every digit the widest one, the icons beside don't move
// each time that a minute passes.
QString guideFor(QString label)
{
    for (QChar &character : label) {
        if (character.isDigit())
            character = u'0';
    }
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
    switch (presentation) {
    case Presentation::Label:
        setLabel(properties, state);
        break;
    case Presentation::Wide:
        properties.picture = picture(state, StatusPicture::Shape::Wide);
        break;
    case Presentation::Square:
        properties.picture = picture(state, StatusPicture::Shape::Square);
        break;
    }
    return properties;
}

} // namespace kelo
