#pragma once

#include "Settings/SettingsPage.h"

#include <QObject>
#include <QVariantList>
#include <functional>

namespace mivora {

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

    int pageIndex() const { return static_cast<int>(m_page); }

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
