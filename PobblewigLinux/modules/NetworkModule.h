#pragma once

#include "PobblewigLinux/modules/HTTPClientMaking.h"

#include <QObject>

namespace pobblewig {

/// The libraries that reach the network are as large as all that the buddy needs beyond an empty
/// window.
class NetworkModule final : public QObject, public HTTPClientMaking {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "com.pobblewig.HTTPClientMaking")
    Q_INTERFACES(pobblewig::HTTPClientMaking)

public:
    std::unique_ptr<HTTPClient> makeHTTPClient() override;
};

} // namespace pobblewig
