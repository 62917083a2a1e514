#pragma once

#include "KeloSparkle/StandardUpdaterController.h"
#include "KeloUpdates/Updater.h"

namespace kelo {

class InformationDictionary;

/// Updates the program from its makers' appcast, as the information dictionary of this build says. Without a
/// usable public key nothing is ever fetched; a check then says so.
class SparkleUpdater final : public Updater
{
public:
    SparkleUpdater(const InformationDictionary &dictionary, const UpdaterHost &host);

    /// Always.
    bool canCheckForUpdates() const override { return true; }

    void checkForUpdates() override { m_controller.checkForUpdates(); }

    StandardUpdaterController &controller() { return m_controller; }

private:
    StandardUpdaterController m_controller;
};

/// The real surroundings: the plug-in, the desktop's installer and file manager, the clock, the user's state
/// and cache folders. \a views must outlive the updater.
UpdaterHost makeUpdaterHost(ViewLoader &views, const QDBusConnection &sessionBus, const ProgramName &program);

} // namespace kelo
