#include "KeloPanel/backends/X11WorkArea.h"

#include <QScreen>

namespace kelo {

QRect workArea(const QScreen &screen)
{
    return screen.availableGeometry();
}

} // namespace kelo
