#include "PobblewigLinux/modules/NetworkModule.h"

#include "foundation/NetworkHTTPClient.h"

namespace pobblewig {

std::unique_ptr<HTTPClient> NetworkModule::makeHTTPClient()
{
    return std::make_unique<NetworkHTTPClient>();
}

} // namespace pobblewig
