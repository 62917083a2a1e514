#pragma once

#include <QPromise>
#include <QThreadPool>
#include <memory>

namespace kelo {

/// Runs \a work, which takes longer than a frame, on another thread; the future has what it returns.
template<typename Work> auto runAside(Work work) -> QFuture<decltype(work())>
{
    const auto promise = std::make_shared<QPromise<decltype(work())>>();
    promise->start();
    QThreadPool::globalInstance()->start([promise, work = std::move(work)] {
        promise->addResult(work());
        promise->finish();
    });
    return promise->future();
}

} // namespace kelo
