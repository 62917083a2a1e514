#pragma once

#include "desktop/RunningMivora.h"

#include <gtest/gtest.h>
#include <optional>

namespace support {

/// Tests of the real program on one desktop, which they find one after the other. Skipped where the programs
/// of a desktop are missing.
class MivoraOnDesktop : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        if (Desktop::isInstalled())
            desktop.emplace();
    }

    static void TearDownTestSuite() { desktop.reset(); }

    void SetUp() override
    {
        if (!desktop)
            GTEST_SKIP() << "openbox, xfce4-panel, xterm, xdotool or dbus-daemon is not installed";
    }

    /// Not started yet.
    RunningMivora &prepare(const std::vector<CalendarEntry> &entries)
    {
        RunningMivora &program = mivora.emplace(*desktop, entries);
        // No handler of the machine is the default here.
        program.setEnvironment(QStringLiteral("XDG_DATA_DIRS"), desktop->path(QStringLiteral("nothing")));
        return program;
    }

    RunningMivora &start(const std::vector<CalendarEntry> &entries)
    {
        prepare(entries).start();
        EXPECT_TRUE(mivora->isShown());
        return *mivora;
    }

    static inline std::optional<Desktop> desktop;
    std::optional<RunningMivora> mivora;
};

} // namespace support
