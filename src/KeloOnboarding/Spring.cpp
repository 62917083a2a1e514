#include "KeloOnboarding/Spring.h"

#include <cmath>
#include <numbers>

namespace kelo {

namespace {

constexpr double response = 0.5;
constexpr double dampingFraction = 0.85;

// The damped harmonic oscillator that starts at rest, one length from its end.
double springWay(double progress)
{
    if (progress >= 1)
        return 1;
    const double time = progress * std::chrono::duration<double>(springLength).count();
    const double frequency = 2 * std::numbers::pi / response;
    const double decay = dampingFraction * frequency;
    const double ringing = frequency * std::sqrt(1 - dampingFraction * dampingFraction);
    const double swing = std::cos(ringing * time) + decay / ringing * std::sin(ringing * time);
    return 1 - std::exp(-decay * time) * swing;
}

} // namespace

QEasingCurve springCurve()
{
    QEasingCurve curve;
    curve.setCustomType(springWay);
    return curve;
}

} // namespace kelo
