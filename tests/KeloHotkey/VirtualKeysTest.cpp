#include "KeloHotkey/VirtualKeys.h"

#include <gtest/gtest.h>
#include <set>

using namespace kelo;

TEST(VirtualKeys, nameEachPhysicalKeyOnce)
{
    std::set<int> virtualKeys;
    std::set<int> evdevKeys;
    for (const KeyCodePair &pair : keyCodePairs) {
        EXPECT_TRUE(virtualKeys.insert(pair.virtualKey).second) << pair.virtualKey;
        EXPECT_TRUE(evdevKeys.insert(pair.evdev).second) << pair.evdev;
        if (const auto xKey = xKeyCode(pair.virtualKey)) {
            EXPECT_EQ(virtualKeyForScanCode(*xKey), pair.virtualKey);
        }
    }
}
