#pragma once

#include "foundation/Stream.h"
#include "foundation/Task.h"

#include <QFutureWatcher>
#include <QThreadPool>
#include <QTimer>
#include <QtConcurrentRun>

#include <memory>

namespace pobblewig {

/// The thread on which calendars are read and written, one job after another. It is not of the
/// common pool: a job may wait for a file system or a server that never answers.
class CalendarThread {
public:
    CalendarThread() { m_pool->setMaxThreadCount(1); }

    /// Leaves a job alone that does not come to its end.
    ~CalendarThread()
    {
        constexpr int milliseconds = 300;
        if (!m_pool->waitForDone(milliseconds))
            static_cast<void>(m_pool.release());
    }
    Q_DISABLE_COPY_MOVE(CalendarThread)

    /// The outcome of a job, or nothing if it takes longer than the limit. Nobody hears then what
    /// becomes of it.
    template <typename Job>
    auto outcome(Job job, std::chrono::milliseconds limit)
        -> Task<std::optional<std::invoke_result_t<Job>>>
    {
        return outcomeWithin(limit, QtConcurrent::run(m_pool.get(), std::move(job)));
    }

private:
    template <typename Value>
    static Task<std::optional<Value>> outcomeWithin(
        std::chrono::milliseconds limit, QFuture<Value> job)
    {
        const Stream<std::monostate, std::monostate> end;
        QFutureWatcher<Value> watcher;
        const auto stop = [sink = end.sink()] { sink.finish(); };
        QObject::connect(&watcher, &QFutureWatcherBase::finished, &watcher, stop);
        QTimer::singleShot(limit, &watcher, stop);
        watcher.setFuture(job);
        co_await end.next();
        if (!job.isFinished())
            co_return std::nullopt;
        co_return job.takeResult();
    }

    std::unique_ptr<QThreadPool> m_pool = std::make_unique<QThreadPool>();
};

} // namespace pobblewig
