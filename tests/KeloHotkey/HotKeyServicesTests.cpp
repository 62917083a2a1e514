#include "KeloHotkey/HotKeyServices.h"

#include <gtest/gtest.h>

using namespace kelo;

TEST(HotKeyServices, areChosenByTheSession)
{
    using enum HotKeyServiceKind;

    const struct
    {
        HotKeyEnvironment environment;
        HotKeyServiceKind expected;
    } cases[] = {
        {{.isOnX11 = true, .isWaylandSession = false, .overrule = {}}, X11Grabs},
        {{.isOnX11 = true, .isWaylandSession = true, .overrule = {}}, Portal},
        {{.isOnX11 = false, .isWaylandSession = true, .overrule = {}}, Portal},
        {{.isOnX11 = false, .isWaylandSession = false, .overrule = {}}, None},
        {{.isOnX11 = true, .isWaylandSession = true, .overrule = "x11"}, X11Grabs},
        {{.isOnX11 = false, .isWaylandSession = true, .overrule = "x11"}, None},
        {{.isOnX11 = true, .isWaylandSession = false, .overrule = "portal"}, Portal},
        {{.isOnX11 = true, .isWaylandSession = false, .overrule = "none"}, None},
        {{.isOnX11 = true, .isWaylandSession = false, .overrule = "wayland"}, X11Grabs},
    };

    for (const auto &[environment, expected] : cases)
        EXPECT_EQ(chooseHotKeyService(environment), expected)
            << environment.isOnX11 << environment.isWaylandSession << environment.overrule.constData();
}
