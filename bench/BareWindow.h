#pragma once

namespace mivora {

/// What the least program with a QML window needs up to its first frame.
struct BareWindow
{
    double seconds = 0;
    double megabytes = 0;
};

/// Starts that program on the display that is entered.
BareWindow showBareWindow();

/// The resident memory of this process (proc(5), statm).
double residentMegabytes();

} // namespace mivora
