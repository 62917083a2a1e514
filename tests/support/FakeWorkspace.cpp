#include "support/FakeWorkspace.h"

#include <QCoreApplication>

namespace mivora {

void FakeWorkspace::open(const QString &url, Opened done)
{
    opened.append(url);
    const auto answer = [done = std::move(done), result = succeeds] {
        if (done)
            done(result);
    };
    QMetaObject::invokeMethod(QCoreApplication::instance(), answer, Qt::QueuedConnection);
}

bool FakeWorkspace::hasHandler(const QString &scheme) const
{
    asked.append(scheme);
    return handlers.contains(scheme);
}

} // namespace mivora
