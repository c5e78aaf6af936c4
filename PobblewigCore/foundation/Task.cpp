#include "foundation/Task.h"

#include "foundation/Log.h"

namespace pobblewig {

namespace {

Task<> logged(Task<> task)
{
    try {
        co_await task;
    } catch (const std::exception& error) {
        Log::line(QStringLiteral("buddy: background work failed: %1")
                      .arg(QString::fromUtf8(error.what())));
    }
}

} // namespace

void spawn(Task<> task)
{
    logged(std::move(task));
}

} // namespace pobblewig
