#include "Preferences/Preferences.h"
#include "Preferences/Settings.h"
#include "support/FakeLoginItem.h"
#include "support/MemoryDefaultsStore.h"
#include "support/Require.h"

// Any bytes as the stored shortcut: it has a name, or there is none.
extern "C" int LLVMFuzzerTestOneInput(const unsigned char *data, std::size_t size)
{
    using namespace mivora;
    MemoryDefaultsStore store;
    store.setData(settingsKey::joinHotKey, QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    FakeLoginItem loginItem;
    Preferences preferences(store, loginItem);
    const auto combo = preferences.joinHotKey();
    if (!combo)
        return 0;
    support::require(!combo->displayString().isEmpty(), "a shortcut has a name");
    preferences.setJoinHotKey(std::nullopt);
    preferences.setJoinHotKey(combo);
    support::require(Preferences(store, loginItem).joinHotKey() == combo, "a shortcut comes back");
    return 0;
}
