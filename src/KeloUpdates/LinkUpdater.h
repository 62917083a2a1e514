#pragma once

#include "KeloUpdates/Updater.h"

#include <QString>
#include <functional>

namespace kelo {

/// For programs that come from a package manager, which also updates them: shows the page that lists the
/// released versions.
class LinkUpdater final : public Updater
{
public:
    using Open = std::function<void(const QString &url)>;

    /// \a open shows a page in the user's browser.
    LinkUpdater(QString changelogURL, Open open);

    /// Never.
    bool canCheckForUpdates() const override { return false; }

    void checkForUpdates() override;

private:
    QString m_changelogURL;
    Open m_open;
};

} // namespace kelo
