#pragma once

namespace kelo {

/// Which part of a menu is seen that is higher than its window: how far it is scrolled, and where the arrows
/// are that scroll it. All in pixels.
class MenuScroll
{
public:
    /// The height of an arrow; it covers what lies under it.
    static constexpr int arrowHeight = 18;

    MenuScroll() = default;

    MenuScroll(int contentHeight, int windowHeight) : m_content(contentHeight), m_window(windowHeight) {}

    /// What of the content is at the top of the window.
    int offset() const { return m_offset; }

    bool hasArrowAbove() const { return m_offset > 0; }

    bool hasArrowBelow() const { return m_offset < last(); }

    /// Where the content can be seen, between the arrows.
    int top() const { return hasArrowAbove() ? arrowHeight : 0; }

    int bottom() const { return m_window - (hasArrowBelow() ? arrowHeight : 0); }

    /// The way that the arrow at this height of the window leads: -1 up, 1 down, 0 when there is none.
    int directionAt(int y) const;

    /// Goes on by so many pixels, as far as there is something to see. Returns whether it moved.
    bool scrollBy(int pixels);

    /// Scrolls as little as is needed to see this part of the content. Returns whether it moved.
    bool reveal(int contentTop, int contentBottom);

private:
    int last() const { return m_content > m_window ? m_content - m_window : 0; }

    bool scrollTo(int offset);

    int m_content = 0;
    int m_window = 0;
    int m_offset = 0;
};

} // namespace kelo
