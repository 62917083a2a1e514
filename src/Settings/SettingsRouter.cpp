#include "Settings/SettingsRouter.h"

#include <QVariantMap>

namespace mivora {

void SettingsRouter::select(SettingsPage page)
{
    if (page != m_page) {
        m_page = page;
        Q_EMIT pageChanged();
    }
    if (onChange)
        onChange(page);
}

QVariantList SettingsRouter::pages() const
{
    QVariantList rows;
    for (const SettingsPage page : allSettingsPages) {
        const SettingsPageIcon picture = icon(page);
        rows.append(QVariantMap{{QStringLiteral("title"), title(page)},
                                {QStringLiteral("symbol"), picture.symbol},
                                {QStringLiteral("tint"), picture.tint}});
    }
    return rows;
}

void SettingsRouter::selectRow(int row)
{
    if (row >= 0 && row < static_cast<int>(allSettingsPages.size()))
        select(allSettingsPages.at(static_cast<std::size_t>(row)));
}

} // namespace mivora
