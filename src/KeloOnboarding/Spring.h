#pragma once

#include <QEasingCurve>
#include <chrono>

/// The motion of a spring that is let go and comes to rest at its end.
namespace kelo {

/// The time after which the spring counts as being at rest: within a thousandth of its way.
inline constexpr std::chrono::milliseconds springLength{650};

/// The spring's way from 0 to 1 over springLength: a response (the period without damping) of 0.5 s and 0.85
/// of the critical damping, so that it runs past the end by less than a hundredth.
QEasingCurve springCurve();

} // namespace kelo
