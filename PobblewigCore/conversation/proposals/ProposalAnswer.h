#pragma once

namespace pobblewig {

/// The user's word on a proposal. `allowAlways` confirms, and lets further changes of that kind
/// through unasked if the kind permits that.
enum class ProposalAnswer { confirm, dismiss, allowAlways };

} // namespace pobblewig
