#pragma once

#include "KeloSparkle/engine/NetworkUpdateEngine.h"

namespace kelo {

/// The plug-in's object.
class UpdatesPlugin final : public QObject, public UpdateEngine
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "app.kelo.UpdateEngine/1")
    Q_INTERFACES(kelo::UpdateEngine)

public:
    void check(const UpdateFeed &feed, std::function<void(const CheckOutcome &)> done) override
    {
        m_engine.check(feed, std::move(done));
    }

    void download(const Update &update, const UpdateFeed &feed, const QString &folder,
                  std::function<void(qint64)> progress,
                  std::function<void(const DownloadOutcome &)> done) override
    {
        m_engine.download(update, feed, folder, std::move(progress), std::move(done));
    }

    void cancel() override { m_engine.cancel(); }

private:
    NetworkUpdateEngine m_engine;
};

} // namespace kelo
