#pragma once

#include "Calendar/AccessMemory.h"
#include "Calendar/EventStore.h"
#include "Meetings/Timestamp.h"

#include <QTimeZone>
#include <memory>
#include <string>
#include <vector>

namespace mivora {

class DefaultsStore;

/// Which calendars are read.
struct StoreOptions
{
    /// Folders in place of the user's own calendars; empty for these.
    std::vector<std::string> folders;
    /// The days around this time are loaded first.
    Timestamp now{};
    QTimeZone zone;
};

/// All of the user's calendars as one store: the folders of iCalendar files and what the desktop keeps,
/// unless $MIVORA_EDS is "none". The user's addresses come from the key "addresses" of `defaults`. `access`
/// must outlive the store.
std::unique_ptr<EventStore> makeCalendarStore(const StoreOptions &options, const DefaultsStore &defaults,
                                              AccessMemory &access);

} // namespace mivora
