#pragma once

#include "Platform/Workspace.h"

#include <QObject>
#include <QVariantList>
#include <functional>

namespace mivora {

/// The ways to a calendar that this desktop has, for the views that lead there. What leads nowhere isn't
/// offered.
class CalendarWays final : public QObject
{
    Q_OBJECT
    /// The shortest first: each with its `title`, a `text` about it, and the words of the `button` that
    /// follow() is for. The last one is a folder, and has nothing to open.
    Q_PROPERTY(QVariantList all READ all CONSTANT)
    /// Whether the system settings have a place for accounts, and one for what programs may do.
    Q_PROPERTY(bool hasAccounts READ hasAccounts CONSTANT)
    Q_PROPERTY(bool hasPrivacy READ hasPrivacy CONSTANT)
    Q_PROPERTY(bool canSubscribe READ canSubscribe CONSTANT)

public:
    struct Actions
    {
        /// Opens a link into the system settings.
        std::function<void(const QString &link)> open;
        /// Whether such a link opens anything; all do where this is empty.
        std::function<bool(const QString &link)> leadsSomewhere{};
        /// Asks for the address of a calendar; may be empty.
        std::function<void()> subscribe{};
    };

    explicit CalendarWays(Actions actions) : m_actions(std::move(actions)) {}

    QVariantList all() const;

    bool hasAccounts() const { return has(internetAccountsLink); }

    bool hasPrivacy() const { return has(calendarPrivacyLink); }

    bool canSubscribe() const { return bool(m_actions.subscribe); }

    Q_INVOKABLE void openAccounts() const { m_actions.open(QLatin1String(internetAccountsLink)); }

    Q_INVOKABLE void openPrivacy() const { m_actions.open(QLatin1String(calendarPrivacyLink)); }

    Q_INVOKABLE void subscribe() const { m_actions.subscribe(); }

    /// Leads to the way that has this place in all().
    Q_INVOKABLE void follow(int index) const;

private:
    bool has(const char *link) const;

    Actions m_actions;
};

} // namespace mivora
