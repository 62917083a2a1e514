#pragma once

#include <QString>
#include <functional>

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

/// For programs that come from a package manager, which also updates them: shows the page that lists the
/// released versions.
class LinkUpdater final : public Updater
{
public:
    using Open = std::function<void(const QString &url)>;

    /// `open` shows a page in the user's browser.
    LinkUpdater(QString changelogURL, Open open)
        : m_changelogURL(std::move(changelogURL)), m_open(std::move(open))
    {
    }

    bool canCheckForUpdates() const override { return false; }

    void checkForUpdates() override { m_open(m_changelogURL); }

private:
    QString m_changelogURL;
    Open m_open;
};

} // namespace kelo
