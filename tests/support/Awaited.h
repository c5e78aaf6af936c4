#pragma once

#include "foundation/Task.h"

#include <QEventLoop>
#include <QTest>
#include <QTimer>

#include <chrono>
#include <optional>

namespace pobblewig {

/// Runs the event loop until the task is done; a task that is never resumed ends the test program.
template <typename Value>
Value awaited(Task<Value> task)
{
    std::optional<Value> result;
    QEventLoop loop;
    QTimer::singleShot(
        std::chrono::seconds(20), &loop, [] { qFatal("the awaited task never finished"); });
    [](Task<Value> awaitedTask, std::optional<Value>* into, QEventLoop* until) -> Task<> {
        into->emplace(co_await awaitedTask);
        until->quit();
    }(std::move(task), &result, &loop);
    if (!result)
        loop.exec();
    return *std::move(result);
}

inline void awaited(Task<> task)
{
    awaited([](Task<> inner) -> Task<bool> {
        co_await inner;
        co_return true;
    }(std::move(task)));
}

} // namespace pobblewig
