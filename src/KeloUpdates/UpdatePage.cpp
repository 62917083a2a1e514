#include "KeloUpdates/UpdatePage.h"

#include <QCoreApplication>
#include <QLocale>

namespace kelo {

namespace {

struct UpdateText
{
    Q_DECLARE_TR_FUNCTIONS(Updates)
};

UpdatePage finalPage(const QString &heading, const QString &text)
{
    UpdatePage page;
    page.heading = heading;
    page.text = text;
    page.primaryLabel = UpdateText::tr("OK");
    return page;
}

UpdatePage upToDatePage(const ProgramName &program)
{
    UpdatePage page =
        finalPage(UpdateText::tr("You're up to date"),
                  UpdateText::tr("%1 %2 is the newest version.").arg(program.name, program.version));
    page.symbol = QStringLiteral("checkmark.circle.fill");
    return page;
}

UpdatePage offerPage(const Update &update, const ProgramName &program)
{
    UpdatePage page;
    page.heading = UpdateText::tr("A new version of %1 is available").arg(program.name);
    page.text = UpdateText::tr("%1 %2 was released on %3. You have %4.")
                    .arg(program.name, update.version, QLocale().toString(update.date), program.version);
    page.notes = update.notes;
    page.primaryLabel = UpdateText::tr("Download…");
    page.primary = UpdateAction::openPage;
    page.secondaryLabel = UpdateText::tr("Later");
    return page;
}

QString faultText(UpdateFault fault, const ProgramName &program)
{
    switch (fault) {
    case UpdateFault::incomplete:
        return UpdateText::tr("A part of %1 is missing. Install %1 again.").arg(program.name);
    case UpdateFault::unusableFeed:
        return UpdateText::tr("This build of %1 has no valid key to verify updates with. Get new versions "
                              "from where you got this one.")
            .arg(program.name);
    case UpdateFault::unreachable:
        return UpdateText::tr(
            "The update server can't be reached. Check your internet connection, then try again.");
    case UpdateFault::untrustedServer:
        return UpdateText::tr("The update server couldn't prove that it is genuine. Check the date of your "
                              "computer, or try again on another network.");
    case UpdateFault::refusedByServer:
        return UpdateText::tr("The update server answered with an error. Try again later.");
    case UpdateFault::notGenuine:
        return UpdateText::tr(
                   "What the update server says is not signed by the makers of %1. Try again later; if "
                   "it happens again, tell them.")
            .arg(program.name);
    case UpdateFault::malformedFeed:
        return UpdateText::tr("The list of versions can't be read. Try again later.");
    }
    return {};
}

UpdatePage failurePage(UpdateFault fault, const ProgramName &program)
{
    UpdatePage page = finalPage(UpdateText::tr("Couldn't check for updates"), faultText(fault, program));
    page.symbol = QStringLiteral("exclamationmark.triangle.fill");
    if (fault != UpdateFault::incomplete && fault != UpdateFault::unusableFeed) {
        page.secondaryLabel = UpdateText::tr("Try Again");
        page.secondary = UpdateAction::check;
    }
    return page;
}

} // namespace

UpdatePage notConfiguredPage(const ProgramName &program)
{
    return finalPage(
        UpdateText::tr("No update feed configured"),
        UpdateText::tr("This build of %1 has no update feed configured, so it can't look for new versions "
                       "itself. Get them from where you got this one.")
            .arg(program.name));
}

UpdatePage checkingPage()
{
    UpdatePage page;
    page.heading = UpdateText::tr("Checking for updates…");
    page.isWorking = true;
    page.secondaryLabel = UpdateText::tr("Cancel");
    return page;
}

UpdatePage pageOf(const CheckOutcome &outcome, const ProgramName &program)
{
    if (const auto *update = std::get_if<Update>(&outcome))
        return offerPage(*update, program);
    if (const auto *fault = std::get_if<UpdateFault>(&outcome))
        return failurePage(*fault, program);
    return upToDatePage(program);
}

} // namespace kelo
