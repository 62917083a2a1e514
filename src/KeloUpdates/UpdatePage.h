#pragma once

#include "KeloUpdates/UpdateFeed.h"

#include <QObject>

namespace kelo {

enum class UpdateAction {
    /// Nothing more is to be said or done.
    close,
    check,
    openPage,
};

/// Everything that the update window shows at one time.
struct UpdatePage
{
    Q_GADGET
    Q_PROPERTY(QString symbol MEMBER symbol)
    Q_PROPERTY(QString heading MEMBER heading)
    Q_PROPERTY(QString text MEMBER text)
    Q_PROPERTY(QString notes MEMBER notes)
    Q_PROPERTY(bool isWorking MEMBER isWorking)
    Q_PROPERTY(QString primaryLabel MEMBER primaryLabel)
    Q_PROPERTY(QString secondaryLabel MEMBER secondaryLabel)

public:
    /// One of the theme's, or empty.
    QString symbol;
    QString heading;
    QString text;
    /// Plain text; empty for pages without.
    QString notes;
    bool isWorking = false;
    /// Buttons; those without a label are not there.
    QString primaryLabel;
    QString secondaryLabel;
    UpdateAction primary = UpdateAction::close;
    UpdateAction secondary = UpdateAction::close;
};

/// The name and the version of the running program, as people know them.
struct ProgramName
{
    QString name;
    QString version;
};

/// There is no key to verify updates with in this build.
UpdatePage notConfiguredPage(const ProgramName &program);
UpdatePage checkingPage();
/// What came of the check and, if something went wrong, what to do.
UpdatePage pageOf(const CheckOutcome &outcome, const ProgramName &program);

} // namespace kelo
