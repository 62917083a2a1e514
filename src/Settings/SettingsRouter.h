#pragma once

#include <QObject>
#include <QString>
#include <QVariantList>
#include <array>
#include <functional>
#include <optional>

namespace mivora {

/// The pages of the settings window, in the order of its sidebar.
enum class SettingsPage { general, calendars };

inline constexpr std::array allSettingsPages{SettingsPage::general, SettingsPage::calendars};

/// The page that is asked for by the name `raw`, such as "general" (case-sensitive); or nothing.
std::optional<SettingsPage> settingsPageFromRawValue(const QString &raw);

/// What stands in the sidebar and in the window's title.
QString title(SettingsPage page);

/// Which page of the settings is selected.
class SettingsRouter final : public QObject
{
    Q_OBJECT
    /// The index of the page in `pages`.
    Q_PROPERTY(int pageIndex READ pageIndex NOTIFY pageChanged)
    /// The rows of the sidebar: title, symbol and tint.
    Q_PROPERTY(QVariantList pages READ pages CONSTANT)

public:
    using QObject::QObject;

    SettingsPage page() const { return m_page; }

    /// Selects the page. onChange is called even when it was selected before.
    void select(SettingsPage page);

    int pageIndex() const { return int(m_page); }

    QVariantList pages() const;

    /// Selects the page of a row in the sidebar; ignores -1, which is no row.
    Q_INVOKABLE void selectRow(int row);

    /// Called after every selection, with the selected page.
    std::function<void(SettingsPage)> onChange;

Q_SIGNALS:
    void pageChanged();

private:
    SettingsPage m_page = SettingsPage::general;
};

} // namespace mivora
