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
        if (const auto xKey = xKeyCode(pair.virtualKey))
            EXPECT_EQ(virtualKeyForScanCode(*xKey), pair.virtualKey);
    }
}

TEST(VirtualKeys, leaveOutWhatHasNoCounterpart)
{
    for (const std::uint32_t virtualKey : {52u, 128u, 65535u, 0xffffffffu})
        EXPECT_EQ(xKeyCode(virtualKey), std::nullopt) << virtualKey;
    // The function key has a code that X can't express.
    EXPECT_EQ(xKeyCode(virtualFunction), std::nullopt);
    for (const std::uint32_t scanCode : {0u, 8u, 0xffffffffu})
        EXPECT_EQ(virtualKeyForScanCode(scanCode), std::nullopt) << scanCode;
}
