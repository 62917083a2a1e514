#pragma once

#include "KeloUpdates/StandardUpdaterController.h"
#include "KeloUpdates/Updater.h"

#include <QJsonObject>

namespace kelo {

/// The keys of the information dictionary, the JSON object that a build is installed with: the address of the
/// feed, and the Ed25519 public key (base64) that it is signed for.
inline constexpr QLatin1String feedKey("SUFeedURL");
inline constexpr QLatin1String publicKeyKey("SUPublicEDKey");

/// Whether updates are looked for in this build: `publicKey` is a text, and no placeholder ("REPLACE…").
bool startsUpdater(const QJsonValue &publicKey);

/// Looks for new versions in its makers' feed, as the information dictionary of this build says. Without a
/// usable public key nothing is ever fetched; a check then says so.
class SparkleUpdater final : public Updater
{
public:
    SparkleUpdater(const QJsonObject &information, const UpdaterHost &host);

    bool canCheckForUpdates() const override { return true; }

    void checkForUpdates() override { m_controller.checkForUpdates(); }

    StandardUpdaterController &controller() { return m_controller; }

private:
    StandardUpdaterController m_controller;
};

} // namespace kelo
