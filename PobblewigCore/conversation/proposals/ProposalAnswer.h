#pragma once

namespace pobblewig {

/// The user's answer to a proposal. `allowAlways` confirms it and allows later changes of that kind
/// without asking, if the kind permits it.
enum class ProposalAnswer { confirm, dismiss, allowAlways };

} // namespace pobblewig
