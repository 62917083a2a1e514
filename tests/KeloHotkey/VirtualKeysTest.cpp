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
    }
}

TEST(VirtualKeys, goToXKeyCodesAndBack)
{
    const struct
    {
        std::uint32_t virtualKey;
        std::uint8_t xKey;
    } cases[] = {{0, 38}, {9, 55}, {12, 24}, {36, 36}, {53, 9}, {76, 104}, {122, 67}, {126, 111}, {10, 94}};

    for (const auto &row : cases) {
        EXPECT_EQ(xKeyCode(row.virtualKey), row.xKey);
        EXPECT_EQ(virtualKeyForScanCode(row.xKey), row.virtualKey);
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
