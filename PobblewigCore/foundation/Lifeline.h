#pragma once

#include <memory>

namespace pobblewig {

/// A member of an object that may go while one of its coroutines waits. The coroutine watches it
/// and, once it has expired, touches nothing of the object any more.
class Lifeline {
public:
    using Watch = std::weak_ptr<const bool>;

    Lifeline() = default;
    Lifeline(const Lifeline&) = delete;
    Lifeline& operator=(const Lifeline&) = delete;

    Watch watch() const { return m_life; }

private:
    std::shared_ptr<const bool> m_life = std::make_shared<const bool>(true);
};

} // namespace pobblewig
