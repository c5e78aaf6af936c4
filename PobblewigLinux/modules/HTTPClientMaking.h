#pragma once

#include "foundation/HTTPClient.h"

#include <QtPlugin>

namespace pobblewig {

/// What the module "network" is for.
class HTTPClientMaking {
public:
    virtual ~HTTPClientMaking() = default;

    virtual std::unique_ptr<HTTPClient> makeHTTPClient() = 0;
};

} // namespace pobblewig

Q_DECLARE_INTERFACE(pobblewig::HTTPClientMaking, "com.pobblewig.HTTPClientMaking")
