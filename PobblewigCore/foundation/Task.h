#pragma once

#include <QCoroTask>

namespace pobblewig {

/// Work that waits without blocking the event loop. Dropping a task detaches it; it goes on.
template <typename Value = void>
using Task = QCoro::Task<Value>;

/// Starts work that nobody waits for. What a library throws out of it is logged.
void spawn(Task<> task);

} // namespace pobblewig
