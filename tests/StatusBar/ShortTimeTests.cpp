#include "MeetingTexts/MeetingTexts.h"

#include "support/MeetingFactory.h"

#include <gtest/gtest.h>

namespace mivora {

TEST(ShortTime, isTheLocalesWithoutDateAndSeconds)
{
    const struct
    {
        const char *name;
        const char *time;
        const char *zone;
        QLocale locale;
        const char *text;
    } rows[] = {
        {"C", "2026-03-10T09:05:59Z", "UTC", QLocale::c(), "09:05"},
        {"American", "2026-03-10T09:05:00Z", "UTC", QLocale(QLocale::English, QLocale::UnitedStates),
         "9:05 AM"},
        {"German", "2026-03-10T21:05:00Z", "UTC", QLocale(QLocale::German), "21:05"},
        {"Finnish", "2026-03-10T09:05:00Z", "UTC", QLocale(QLocale::Finnish), "9.05"},
        {"Egyptian digits", "2026-03-10T09:05:00Z", "UTC", QLocale(QLocale::Arabic, QLocale::Egypt),
         "٩:٠٥ ص"},
        {"winter", "2026-03-28T23:00:00Z", "Europe/Berlin", QLocale::c(), "00:00"},
        {"summer", "2026-03-29T01:00:00Z", "Europe/Berlin", QLocale::c(), "03:00"},
        {"a fraction before the minute", "2026-03-10T09:05:59.999Z", "UTC", QLocale::c(), "09:05"},
        {"before 1970", "1969-12-31T23:59:59.500Z", "UTC", QLocale::c(), "23:59"},
    };

    for (const auto &row : rows) {
        const QString text = shortTime(at(row.time), QTimeZone(row.zone), row.locale);
        EXPECT_EQ(text.toStdString(), row.text) << row.name;
    }
}

} // namespace mivora
