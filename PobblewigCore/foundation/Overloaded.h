#pragma once

namespace pobblewig {

/// One lambda per alternative, for `std::visit`.
template <typename... Handlers>
struct Overloaded : Handlers... {
    using Handlers::operator()...;
};

template <typename... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

} // namespace pobblewig
