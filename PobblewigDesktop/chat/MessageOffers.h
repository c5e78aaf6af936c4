#pragma once

#include <QUuid>

#include <optional>

namespace pobblewig {

/// What the chat offers for its newest messages at the moment.
struct MessageOffers {
    /// The question that can be asked in other words.
    std::optional<QUuid> changeable;
    /// The reply that can be given again.
    std::optional<QUuid> repeatable;
};

} // namespace pobblewig
