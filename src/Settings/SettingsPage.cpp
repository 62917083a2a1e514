#include "Settings/SettingsPage.h"

#include <QCoreApplication>

namespace mivora {

namespace {

struct Page
{
    QLatin1String rawValue;
    const char *title = nullptr;
    QLatin1String symbol;
    QLatin1String tint;
};

// In the order of the enumeration.
constexpr std::array pages{
    Page{QLatin1String("general"), QT_TRANSLATE_NOOP("SettingsPage", "General"),
         QLatin1String("gearshape.fill"), QLatin1String("gray")},
    Page{QLatin1String("calendars"), QT_TRANSLATE_NOOP("SettingsPage", "Calendars"),
         QLatin1String("calendar"), QLatin1String("red")},
};
static_assert(pages.size() == allSettingsPages.size());

const Page &row(SettingsPage page)
{
    return pages.at(static_cast<std::size_t>(page));
}

} // namespace

QString rawValue(SettingsPage page)
{
    return row(page).rawValue;
}

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

SettingsPageIcon icon(SettingsPage page)
{
    return {row(page).symbol, row(page).tint};
}

} // namespace mivora
