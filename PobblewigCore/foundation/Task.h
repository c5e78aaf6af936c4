#pragma once

#include <QCoroTask>

namespace pobblewig {

/// Work that waits without blocking the event loop. A dropped task is detached and continues.
template <typename Value = void>
using Task = QCoro::Task<Value>;

/// Starts work whose result is not needed. Exceptions from libraries are logged.
void spawn(Task<> task);

} // namespace pobblewig
