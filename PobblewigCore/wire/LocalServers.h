#pragma once

#include "foundation/HTTPClient.h"

#include <vector>

/// Servers of models on this computer.
namespace pobblewig::LocalServers {

struct Server {
    /// Such as "http://127.0.0.1:11434/v1".
    QString baseURL;
    /// At least one.
    std::vector<QString> models;

    bool operator==(const Server&) const = default;
};

/// Where such programs usually listen.
std::vector<QString> usualAddresses();

/// Asks all these addresses at once for their models, each for at most a second. Returns those that
/// have some, in the same order. The client must outlive the task.
Task<std::vector<Server>> find(HTTPClient* http, std::vector<QString> addresses = usualAddresses());

} // namespace pobblewig::LocalServers
