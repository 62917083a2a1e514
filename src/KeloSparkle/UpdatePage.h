#pragma once

#include "KeloSparkle/UpdateEngine.h"

#include <optional>

namespace kelo {

enum class UpdateAction { none, close, check, cancel, download, open, reveal };

/// What was going on when something went wrong.
enum class UpdateStep { check, download };

struct UpdateButton
{
    QString label;
    UpdateAction action = UpdateAction::none;

    bool operator==(const UpdateButton &) const = default;
};

/// Everything that the update window shows at one time.
struct UpdatePage
{
    /// One of the theme's, or empty.
    QString symbol;
    QString heading;
    QString text;
    /// Plain text; empty for pages without.
    QString notes;
    /// From 0 to 1, below 0 for work without a known end; nothing when there is no work.
    std::optional<double> progress;
    UpdateButton primary;
    UpdateButton secondary;

    bool operator==(const UpdatePage &) const = default;
};

/// The name and the version of the running program, as people know them.
struct ProgramName
{
    QString name;
    QString version;
};

/// There is no feed, or no key, in this build.
UpdatePage notConfiguredPage(const ProgramName &program);
UpdatePage checkingPage();
UpdatePage noUpdatePage(const ProgramName &program, const NoUpdate &outcome);
UpdatePage updatePage(const ProgramName &program, const Update &update);
/// \a received in bytes.
UpdatePage downloadingPage(const ProgramName &program, const Update &update, qint64 received);
UpdatePage readyPage(const ProgramName &program, const Update &update);
/// The package is there, but no program to open it with.
UpdatePage lyingPage(const QString &path);
/// What went wrong, and what to do.
UpdatePage failurePage(const ProgramName &program, const UpdateFailure &failure, UpdateStep step);

} // namespace kelo
