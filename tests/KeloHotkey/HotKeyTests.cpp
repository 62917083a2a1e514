#include "KeloHotkey/HotKey.h"

#include "KeloHotkey/CompositorBinding.h"
#include "KeloHotkey/backends/LatinLayout.h"
#include "support/FakeHotKeyService.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace kelo {

TEST(HotKeyCombo, isReadFromItsStoredFormOnly)
{
    const std::pair<const char *, std::optional<HotKeyCombo>> cases[] = {
        {R"({"keyCode":9,"modifiers":768})", HotKeyCombo::defaultCombo},
        {R"({"modifiers":0,"keyCode":4294967295,"more":[]})", HotKeyCombo{4294967295, 0}},
        {R"({"keyCode":9})", {}},
        {R"({"modifiers":768})", {}},
        {R"({"keyCode":true,"modifiers":768})", {}},
        {R"({"keyCode":9.5,"modifiers":768})", {}},
        {R"({"keyCode":9,"modifiers":4294967296})", {}},
    };

    for (const auto &[json, combo] : cases)
        EXPECT_EQ(HotKeyCombo::fromJson(json), combo) << json;
}

TEST(HotKeyCombo, isShownInTheFixedOrderOfModifiers)
{
    EXPECT_EQ(HotKeyCombo::defaultCombo.displayString(), QStringLiteral("⇧⌘V"));
    EXPECT_EQ((HotKeyCombo{49, optionKey | controlKey}).displayString(), QStringLiteral("⌃⌥Space"));
    EXPECT_EQ((HotKeyCombo{105, 0x1b00}).keyCaps().join(QLatin1Char(' ')), QStringLiteral("⌃ ⌥ ⇧ ⌘ #105"));
}

TEST(HotKeyCombo, isNamedAsTheDesktopDoes)
{
    for (const auto &[desktop, combo, text] : {
             std::tuple("", HotKeyCombo{38, controlKey | optionKey}, "Ctrl+Alt+J"),
             {"ubuntu:GNOME",
              {115, controlKey | optionKey | shiftKey | commandKey},
              "Shift+Ctrl+Alt+Super+Home"},
             {"KDE", {123, controlKey | optionKey | shiftKey | commandKey}, "Meta+Ctrl+Alt+Shift+Left"},
             {"sway", {83, commandKey}, "Super+Num 1"},
         }) {
        qputenv("XDG_CURRENT_DESKTOP", desktop);
        EXPECT_EQ(combo.text().toStdString(), text);
    }
    qunsetenv("XDG_CURRENT_DESKTOP");
}

TEST(CompositorBinding, isALineOfItsConfiguration)
{
    for (const auto &[desktop, line] : {
             std::pair("sway", "bindsym Mod4+Shift+j exec mivora join"),
             {"Hyprland", "bind = SUPER SHIFT, j, exec, mivora join"},
             {"niri", "Super+Shift+j { spawn \"mivora\" \"join\"; }"},
             {"labwc:wlroots",
              "<keybind key=\"W-S-j\"><action name=\"Execute\" command=\"mivora join\"/></keybind>"},
             {"river", "riverctl map normal Super+Shift j spawn 'mivora join'"},
             {"weston", "mivora join"},
         }) {
        qputenv("XDG_CURRENT_DESKTOP", desktop);
        EXPECT_EQ(
            compositorBinding({38, commandKey | shiftKey}, QStringLiteral("mivora join")).line.toStdString(),
            line);
    }
    qunsetenv("XDG_CURRENT_DESKTOP");
}

TEST(HotKey, runsItsActionFromTheEventLoopForItsOwnNumberUntilItIsReleased)
{
    FakeHotKeyService service;
    std::unique_ptr<HotKey> hotKey;
    int runs = 0;
    hotKey = HotKey::create(service, {}, [&] {
        hotKey.reset();
        ++runs;
    });
    Q_EMIT service.pressed(hotKey->id() + 1);
    QCoreApplication::processEvents();
    EXPECT_TRUE(hotKey);
    Q_EMIT service.pressed(hotKey->id());
    Q_EMIT service.pressed(hotKey->id());
    EXPECT_TRUE(hotKey);
    QCoreApplication::processEvents();
    EXPECT_EQ(runs, 1) << "not by a press that was still queued";
    EXPECT_TRUE(service.registered.empty());
}

TEST(LatinLayout, givesWhatAKeyTypesOnTheActiveLayoutOrTheFirstLatinOneOrTheBuiltInOne)
{
    for (const auto &[names, active, virtualKey, character, symbol] : {
             std::tuple("fr", 0, 12, "a", "a"),
             {"ru,fr", 0, 12, "a", "a"},
             {"us,fr", 1, 12, "a", "a"},
             {"us,fr", 2, 12, "q", "q"},
             {"gr,il", 1, 12, "q", "q"},
             {"no such", 0, 12, "q", "q"},
             {"fr", 0, 33, "^", "dead_circumflex"},
             {"de", 0, 41, "ö", "odiaeresis"},
             {"us", 0, 83, "1", "KP_1"},
             {"us", 0, 76, "none", "KP_Enter"},
             {"us", 0, 300, "none", ""},
         }) {
        const LatinLayout layout = LatinLayout::fromNames(names, active);
        EXPECT_EQ(layout.character(virtualKey).value_or(QStringLiteral("none")).toStdString(), character)
            << names << ' ' << active << ' ' << virtualKey;
        EXPECT_EQ(layout.symbolName(virtualKey).toStdString(), symbol) << names;
    }
}

} // namespace kelo
