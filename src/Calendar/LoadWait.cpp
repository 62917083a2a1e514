#include "Calendar/LoadWait.h"

#include "Calendar/EventStore.h"

#include <QEventLoop>
#include <QTimer>

namespace mivora {

bool waitUntilLoaded(EventStore &store, std::chrono::milliseconds limit)
{
    if (store.isLoaded())
        return true;
    QEventLoop loop;
    QObject::connect(&store, &EventStore::changed, &loop, [&] {
        if (store.isLoaded())
            loop.quit();
    });
    QTimer::singleShot(limit, &loop, &QEventLoop::quit);
    loop.exec();
    return store.isLoaded();
}

} // namespace mivora
