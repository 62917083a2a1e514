#include "Settings/SettingsRouter.h"

#include <QCoreApplication>
#include <QVariantMap>

namespace mivora {

namespace {

struct Page
{
    QLatin1String rawValue;
    const char *title = nullptr;
    QLatin1String symbol;
    /// The role of a colour.
    QLatin1String tint;
};

// In the order of the enumeration.
constexpr std::array pages{
    Page{QLatin1String("general"), QT_TRANSLATE_NOOP("SettingsPage", "General"),
         QLatin1String("gearshape.fill"), QLatin1String("secondaryLabel")},
    Page{QLatin1String("calendars"), QT_TRANSLATE_NOOP("SettingsPage", "Calendars"),
         QLatin1String("calendar"), QLatin1String("red")},
};
static_assert(pages.size() == allSettingsPages.size());

const Page &row(SettingsPage page)
{
    return pages.at(std::size_t(page));
}

} // namespace

std::optional<SettingsPage> settingsPageFromRawValue(const QString &raw)
{
    for (const SettingsPage page : allSettingsPages) {
        if (row(page).rawValue == raw)
            return page;
    }
    return std::nullopt;
}

QString title(SettingsPage page)
{
    return QCoreApplication::translate("SettingsPage", row(page).title);
}

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
    for (const SettingsPage page : allSettingsPages)
        rows.append(QVariantMap{{QStringLiteral("title"), title(page)},
                                {QStringLiteral("symbol"), row(page).symbol},
                                {QStringLiteral("tint"), row(page).tint}});
    return rows;
}

void SettingsRouter::selectRow(int row)
{
    if (row >= 0 && row < int(allSettingsPages.size()))
        select(allSettingsPages.at(std::size_t(row)));
}

} // namespace mivora
