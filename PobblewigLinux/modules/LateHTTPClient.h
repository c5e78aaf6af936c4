#pragma once

#include "PobblewigLinux/modules/ModuleLoader.h"
#include "foundation/HTTPClient.h"

namespace pobblewig {

/// The network, from its module and only once something is asked of it. Without the module every
/// request fails as unreachable.
class LateHTTPClient final : public HTTPClient {
public:
    explicit LateHTTPClient(const ModuleLoader& modules = ModuleLoader());

    Task<tl::expected<HTTPResponse, TransportError>> send(HTTPRequest request) override;
    HTTPStream stream(HTTPRequest request) override;

private:
    /// Why there is no client, if there is none.
    std::optional<TransportError> load();

    ModuleLoader m_modules;
    std::unique_ptr<HTTPClient> m_client;
};

} // namespace pobblewig
