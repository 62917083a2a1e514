#pragma once

#include <QColor>
#include <QObject>

namespace kelo {

enum class ColorScheme { light, dark };

/// How much the user wants what belongs together to stand out from the rest.
enum class ContrastLevel { normal, high };

/// The colours of the desktop by the role that they play, for one colour scheme.
struct SystemColors
{
    Q_GADGET
    Q_PROPERTY(QColor label MEMBER label)
    Q_PROPERTY(QColor secondaryLabel MEMBER secondaryLabel)
    Q_PROPERTY(QColor separator MEMBER separator)
    Q_PROPERTY(QColor windowBackground MEMBER windowBackground)
    Q_PROPERTY(QColor sidebarBackground MEMBER sidebarBackground)
    Q_PROPERTY(QColor groupBackground MEMBER groupBackground)
    Q_PROPERTY(QColor control MEMBER control)
    Q_PROPERTY(QColor controlHovered MEMBER controlHovered)
    Q_PROPERTY(QColor controlPressed MEMBER controlPressed)
    Q_PROPERTY(QColor controlBorder MEMBER controlBorder)
    Q_PROPERTY(QColor accent MEMBER accent)
    Q_PROPERTY(QColor accentHovered MEMBER accentHovered)
    Q_PROPERTY(QColor accentPressed MEMBER accentPressed)
    Q_PROPERTY(QColor accentLabel MEMBER accentLabel)
    Q_PROPERTY(QColor link MEMBER link)
    Q_PROPERTY(QColor mark MEMBER mark)
    Q_PROPERTY(QColor markLabel MEMBER markLabel)
    Q_PROPERTY(QColor outline MEMBER outline)
    Q_PROPERTY(QColor orange MEMBER orange)
    Q_PROPERTY(QColor red MEMBER red)
    Q_PROPERTY(QColor green MEMBER green)
    Q_PROPERTY(QColor panel MEMBER panel)
    Q_PROPERTY(QColor panelBorder MEMBER panelBorder)
    Q_PROPERTY(QColor panelHighlight MEMBER panelHighlight)
    Q_PROPERTY(QColor cardFill MEMBER cardFill)
    Q_PROPERTY(QColor cardBorder MEMBER cardBorder)

public:
    /// Text, in two steps of importance.
    QColor label;
    QColor secondaryLabel;
    QColor separator;
    QColor windowBackground;
    QColor sidebarBackground;
    /// The sheet behind a group of settings.
    QColor groupBackground;
    /// The face of a button.
    QColor control;
    QColor controlHovered;
    QColor controlPressed;
    QColor controlBorder;
    /// The user's own colour, for what is chosen or to be pressed, and the text on it.
    QColor accent;
    QColor accentHovered;
    QColor accentPressed;
    QColor accentLabel;
    /// The accent as the colour of text, lighter or darker as legibility wants.
    QColor link;
    /// The accent where it must be seen on any surface: what is switched on, the ring around what has the
    /// keyboard. And what is drawn on it.
    QColor mark;
    QColor markLabel;
    /// What is switched off, and the edge of what may have any colour.
    QColor outline;
    QColor orange;
    QColor red;
    QColor green;
    /// The floating panel, opaque; its translucent form has the same hue.
    QColor panel;
    QColor panelBorder;
    /// The light that falls on the panel's inner edge.
    QColor panelHighlight;
    QColor cardFill;
    QColor cardBorder;

    friend bool operator==(const SystemColors &, const SystemColors &) = default;

    /// The colours of `scheme`; `accent` may be invalid, which gives the default blue. Text has the contrast
    /// of 4.5 to what is behind it, and what must be seen of controls that of 3 (WCAG 2.1, 1.4.3 and 1.4.11).
    static SystemColors of(ColorScheme scheme, const QColor &accent = {},
                           ContrastLevel level = ContrastLevel::normal);
};

/// The opaque colour that `color` gives on an opaque background.
QColor over(const QColor &color, const QColor &background);

/// The contrast of two opaque colours by WCAG 2.1, from 1 to 21.
double contrast(const QColor &one, const QColor &other);

} // namespace kelo
