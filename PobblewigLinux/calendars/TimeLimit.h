#pragma once

#include "foundation/Stream.h"
#include "foundation/Task.h"

#include <QFutureWatcher>
#include <QTimer>

namespace pobblewig {

/// The outcome of a job on another thread, or nothing if it takes longer than the limit. Nobody
/// hears then what becomes of the job.
template <typename Value>
Task<std::optional<Value>> outcomeWithin(std::chrono::milliseconds limit, QFuture<Value> job)
{
    const Stream<std::monostate, std::monostate> end;
    QFutureWatcher<Value> watcher;
    const auto stop = [sink = end.sink()] { sink.finish(std::nullopt); };
    QObject::connect(&watcher, &QFutureWatcherBase::finished, &watcher, stop);
    QTimer::singleShot(limit, &watcher, stop);
    watcher.setFuture(job);
    co_await end.next();
    if (!job.isFinished())
        co_return std::nullopt;
    co_return job.takeResult();
}

} // namespace pobblewig
