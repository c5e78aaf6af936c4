#include "wire/LocalServers.h"

#include "wire/ChatCompletionsLogic.h"

namespace pobblewig {

namespace {

using namespace std::chrono_literals;
using LocalServers::Server;

constexpr auto mostTime = 1s;

Task<Server> asked(HTTPClient* http, QString address)
{
    auto request = ChatCompletionsLogic::modelsRequest({ .baseURL = QUrl(address) });
    request.timeout = mostTime;
    request.longest = mostTime;
    const auto response = co_await http->send(std::move(request));
    Server server { .baseURL = address, .models = {} };
    if (response && response->status == 200)
        server.models = ChatCompletionsLogic::modelNames(response->body);
    co_return server;
}

} // namespace

std::vector<QString> LocalServers::usualAddresses()
{
    std::vector<QString> addresses;
    for (const auto port : { 11434, 1234, 8080, 8000, 5000, 1337 })
        addresses.push_back(QStringLiteral("http://127.0.0.1:%1/v1").arg(port));
    return addresses;
}

Task<std::vector<Server>> LocalServers::find(HTTPClient* http, std::vector<QString> addresses)
{
    std::vector<Task<Server>> questions;
    questions.reserve(addresses.size());
    for (const auto& address : addresses)
        questions.push_back(asked(http, address));
    std::vector<Server> servers;
    for (auto& question : questions) {
        auto server = co_await question;
        if (!server.models.empty())
            servers.push_back(std::move(server));
    }
    co_return servers;
}

} // namespace pobblewig
