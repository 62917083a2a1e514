#include "KeloMenuBar/backends/MenuScroll.h"

#include <algorithm>
#include <utility>

namespace kelo {

int MenuScroll::directionAt(int y) const
{
    if (y >= 0 && y < top())
        return -1;
    return y >= bottom() && y < m_window ? 1 : 0;
}

bool MenuScroll::scrollBy(int pixels)
{
    return scrollTo(m_offset + pixels);
}

bool MenuScroll::reveal(int contentTop, int contentBottom)
{
    // At either end there is no arrow in the way: the clamp takes care of that.
    if (contentTop - m_offset < top())
        return scrollTo(contentTop - arrowHeight);
    if (contentBottom - m_offset > bottom())
        return scrollTo(contentBottom - m_window + arrowHeight);
    return false;
}

bool MenuScroll::scrollTo(int offset)
{
    offset = std::clamp(offset, 0, last());
    return std::exchange(m_offset, offset) != offset;
}

} // namespace kelo
