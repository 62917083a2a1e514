#pragma once

namespace kelo {

/// Looks for new versions of the program, in whatever way this build does. Main thread only.
class Updater
{
public:
    virtual ~Updater() = default;

    /// Whether a check runs inside the program, so that "Check for Updates…" is worth offering.
    virtual bool canCheckForUpdates() const = 0;

    /// Starts a check, or what stands for it, and returns at once.
    virtual void checkForUpdates() = 0;
};

} // namespace kelo
