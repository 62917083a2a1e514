#pragma once

#include "Platform/LoginItem.h"

#include <QStringList>

namespace mivora {

/// The login item as an XDG autostart entry (freedesktop.org Desktop Application Autostart Specification):
/// the user's own file overrules the system's of the same name, and "Hidden=true" in it means off.
class XdgLoginItem final : public LoginItem
{
public:
    /// Where entries are looked for, and what they start.
    struct Places
    {
        /// $XDG_CONFIG_HOME
        QString userFolder;
        /// $XDG_CONFIG_DIRS, the most important first.
        QStringList systemFolders;
        /// The absolute path of the program.
        QString program;

        /// Those of the environment and the running program.
        static Places ofThisProcess();
    };

    explicit XdgLoginItem(Places places) : m_places(std::move(places)) {}

    bool isEnabled() const override;
    std::optional<QString> setEnabled(bool enabled) override;

    /// Has an entry that an earlier version made start the program as this one's entries do.
    void renew();

private:
    QString userFile() const;
    /// Empty when there is none.
    QString systemFile() const;

    Places m_places;
};

} // namespace mivora
