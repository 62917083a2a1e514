#include "KeloSparkle/UpdatePage.h"

#include <QCoreApplication>
#include <QDir>
#include <QLocale>

namespace kelo {

namespace {

struct UpdateText
{
    Q_DECLARE_TR_FUNCTIONS(Updates)
};

UpdateButton button(const QString &label, UpdateAction action)
{
    return {label, action};
}

UpdateButton okButton()
{
    return button(UpdateText::tr("OK"), UpdateAction::close);
}

UpdateButton cancelButton()
{
    return button(UpdateText::tr("Cancel"), UpdateAction::cancel);
}

QString sizeText(qint64 bytes)
{
    return QLocale().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
}

} // namespace

UpdatePage notConfiguredPage(const ProgramName &program)
{
    UpdatePage page;
    page.heading = UpdateText::tr("No update feed configured");
    page.text =
        UpdateText::tr("This build of %1 has no update feed configured, so it can't look for new versions "
                       "itself. Get them from where you got this one.")
            .arg(program.name);
    page.primary = okButton();
    return page;
}

UpdatePage checkingPage()
{
    UpdatePage page;
    page.heading = UpdateText::tr("Checking for updates…");
    page.progress = -1;
    page.secondary = cancelButton();
    return page;
}

UpdatePage noUpdatePage(const ProgramName &program, const NoUpdate &outcome)
{
    UpdatePage page;
    page.symbol = QStringLiteral("checkmark.circle.fill");
    page.heading = UpdateText::tr("You're up to date");
    page.text = UpdateText::tr("%1 %2 is the newest version.").arg(program.name, program.version);
    if (!outcome.needsNewerSystem.isEmpty()) {
        page.heading = UpdateText::tr("No newer version for this system");
        page.text = UpdateText::tr("You have %1 %2. Version %3 needs a newer system.")
                        .arg(program.name, program.version, outcome.needsNewerSystem);
    }
    page.primary = okButton();
    return page;
}

UpdatePage updatePage(const ProgramName &program, const Update &update)
{
    UpdatePage page;
    page.heading = UpdateText::tr("A new version of %1 is available").arg(program.name);
    page.text = UpdateText::tr("%1 %2 can be downloaded (%3). You have %4.")
                    .arg(program.name, update.displayVersion, sizeText(update.length), program.version);
    page.notes = update.notes;
    page.primary = button(UpdateText::tr("Download"), UpdateAction::download);
    page.secondary = button(UpdateText::tr("Later"), UpdateAction::close);
    return page;
}

UpdatePage downloadingPage(const ProgramName &program, const Update &update, qint64 received)
{
    UpdatePage page;
    page.heading = UpdateText::tr("Downloading %1 %2…").arg(program.name, update.displayVersion);
    page.text = received < update.length
                    ? UpdateText::tr("%1 of %2").arg(sizeText(received), sizeText(update.length))
                    : UpdateText::tr("Verifying the signature…");
    page.progress = double(received) / double(update.length);
    page.secondary = cancelButton();
    return page;
}

UpdatePage readyPage(const ProgramName &program, const Update &update)
{
    UpdatePage page;
    page.symbol = QStringLiteral("checkmark.circle.fill");
    page.heading = UpdateText::tr("%1 %2 is ready to install").arg(program.name, update.displayVersion);
    page.text =
        UpdateText::tr("The package is signed by the makers of %1. Open it to install it with your system's "
                       "installer, then start %1 again.")
            .arg(program.name);
    page.primary = button(UpdateText::tr("Open Package"), UpdateAction::open);
    page.secondary = button(UpdateText::tr("Show in Folder"), UpdateAction::reveal);
    return page;
}

UpdatePage lyingPage(const QString &path)
{
    UpdatePage page;
    page.heading = UpdateText::tr("The package is downloaded");
    page.text = UpdateText::tr("No program was found to open it with. You find it here: %1")
                    .arg(QDir::toNativeSeparators(path));
    page.primary = okButton();
    return page;
}

namespace {

struct FaultText
{
    UpdateFault fault;
    const char *text;
};

/// Each says what went wrong and what to do.
constexpr FaultText faultTexts[] = {
    {UpdateFault::incomplete, QT_TRANSLATE_NOOP("Updates", "A part of %1 is missing. Install %1 again.")},
    {UpdateFault::unusableKey,
     QT_TRANSLATE_NOOP("Updates",
                       "This build of %1 has no valid key to verify updates with. Get new versions "
                       "from where you got this one.")},
    {UpdateFault::unreachable,
     QT_TRANSLATE_NOOP("Updates",
                       "The update server can't be reached. Check your internet connection, then try "
                       "again.")},
    {UpdateFault::timedOut,
     QT_TRANSLATE_NOOP("Updates", "The update server took too long to answer. Try again later.")},
    {UpdateFault::refusedByServer,
     QT_TRANSLATE_NOOP("Updates", "The update server answered with an error. Try again later.")},
    {UpdateFault::insecure,
     QT_TRANSLATE_NOOP("Updates",
                       "The update server uses an insecure connection, so nothing was downloaded from "
                       "it. Get new versions from the website of %1.")},
    {UpdateFault::untrustedServer,
     QT_TRANSLATE_NOOP("Updates",
                       "The update server couldn't prove that it is genuine. Check the date of your "
                       "computer, or try again on another network.")},
    {UpdateFault::malformedFeed,
     QT_TRANSLATE_NOOP("Updates", "The list of versions can't be read. Try again later.")},
    {UpdateFault::feedTooLarge,
     QT_TRANSLATE_NOOP("Updates", "The list of versions is too large to be genuine. Try again later.")},
    {UpdateFault::unsignedPackage,
     QT_TRANSLATE_NOOP("Updates",
                       "The new version isn't signed, so it was not downloaded. Try again later.")},
    {UpdateFault::wrongLength,
     QT_TRANSLATE_NOOP("Updates",
                       "The package has not the announced size, so it was deleted. Try again later.")},
    {UpdateFault::wrongSignature,
     QT_TRANSLATE_NOOP("Updates",
                       "The package is not signed by the makers of %1, so it was deleted. Try again "
                       "later; if it happens again, tell them.")},
    {UpdateFault::olderVersion,
     QT_TRANSLATE_NOOP("Updates", "The package is not newer than what you have, so it was deleted. Try again "
                                  "later; if it happens again, tell the makers of %1.")},
    {UpdateFault::cannotSave,
     QT_TRANSLATE_NOOP("Updates", "The package can't be saved. Make room on your disk, then try again.")},
    {UpdateFault::vanished,
     QT_TRANSLATE_NOOP("Updates",
                       "It is no longer where it was downloaded to. Try again to download it once more.")},
};

QString faultText(UpdateFault fault)
{
    for (const FaultText &candidate : faultTexts) {
        if (candidate.fault == fault)
            return UpdateText::tr(candidate.text);
    }
    return {};
}

QString faultHeading(UpdateFault fault, UpdateStep step)
{
    switch (fault) {
    case UpdateFault::unsignedPackage:
    case UpdateFault::wrongLength:
    case UpdateFault::wrongSignature:
    case UpdateFault::olderVersion:
        return UpdateText::tr("The update was refused");
    case UpdateFault::cannotSave:
        return UpdateText::tr("The update couldn't be saved");
    case UpdateFault::vanished:
        return UpdateText::tr("The package is gone");
    default:
        return step == UpdateStep::check ? UpdateText::tr("Couldn't check for updates")
                                         : UpdateText::tr("Couldn't download the update");
    }
}

bool canBeTriedAgain(UpdateFault fault)
{
    return fault != UpdateFault::incomplete && fault != UpdateFault::unusableKey &&
           fault != UpdateFault::insecure;
}

} // namespace

UpdatePage failurePage(const ProgramName &program, const UpdateFailure &failure, UpdateStep step)
{
    UpdatePage page;
    page.symbol = QStringLiteral("exclamationmark.triangle.fill");
    page.heading = faultHeading(failure.fault, step);
    page.text = faultText(failure.fault);
    if (page.text.contains(QLatin1String("%1")))
        page.text = page.text.arg(program.name);
    page.primary = okButton();
    if (canBeTriedAgain(failure.fault))
        page.secondary = button(UpdateText::tr("Try Again"), UpdateAction::check);
    return page;
}

} // namespace kelo
