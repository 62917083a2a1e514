#pragma once

#include "Calendar/EventKitSource.h"

#include <QEventLoop>
#include <QTimer>
#include <chrono>

namespace mivora {

/// Runs the event loop until `store` has loaded, or for a minute.
inline void waitUntilLoaded(EventKitSource &store)
{
    QEventLoop loop;
    QObject::connect(&store, &EventKitSource::changed, &loop, [&] {
        if (store.isLoaded())
            loop.quit();
    });
    QTimer::singleShot(std::chrono::minutes(1), &loop, &QEventLoop::quit);
    if (!store.isLoaded())
        loop.exec();
}

} // namespace mivora
