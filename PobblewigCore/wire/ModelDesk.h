#pragma once

#include "foundation/HTTPClient.h"
#include "foundation/KeychainHelper.h"
#include "foundation/Moment.h"
#include "wire/LocalServers.h"
#include "wire/ModelLanes.h"
#include "wire/RequestLog.h"

#include <functional>

namespace pobblewig {

/// Where a lane's model is named.
enum class ModelSource {
    none,
    /// The product's own backend.
    account,
    /// A variable of the process, which wins over the file.
    session,
    file,
    demo,
};

/// A lane as it is at the moment.
struct LaneState {
    ModelUse use = ModelUse::main;
    ModelSource source = ModelSource::none;
    QString server;
    QString modelID;
    /// Whether there is a key for it, wherever that is kept.
    bool hasKey = false;
    /// Why its latest failed request failed; empty if none did since the start.
    QString lastError = {};

    bool operator==(const LaneState&) const = default;
};

/// What the user chooses about the models, and what can be found out about them.
class ModelDesk {
public:
    struct Dependencies {
        HTTPClient& http;
        KeychainHelper& keychain;
        ModelLanes& lanes;
        const RequestLog& requests;
        std::function<Environment()> environment;
        /// Empty if none is read.
        QString environmentFile;
        const Moment& moment;
    };

    /// A model as the user names it. Without a key the server must not want one.
    struct Choice {
        QString baseURL;
        QString modelID;
        QString key = {};
    };

    /// How long a model took to answer, or why it did not.
    using Trial = tl::expected<std::chrono::milliseconds, LLMFailure>;

    explicit ModelDesk(Dependencies dependencies);

    Task<std::vector<LaneState>> lanes();
    Task<std::vector<LocalServers::Server>> localServers();

    /// The models of a server; empty if it does not tell.
    Task<std::vector<QString>> models(Choice server);

    /// Asks the model one short question, for at most half a minute.
    Task<Trial> tryOut(Choice choice);
    Task<Trial> tryOut(ModelUse use);

    enum class KeyPlace { keyring, file };

    /// Makes it the model of a lane from the next request on: the address and the model's name go
    /// into the environment file, the key into the keyring, or into that file too. The error is a
    /// sentence for the user, and then nothing has changed.
    Task<tl::expected<void, QString>> choose(
        ModelUse use, Choice choice, KeyPlace place = KeyPlace::keyring);

    /// What that file says of a choice with its key in it.
    static QString fileLines(ModelUse use, const Choice& choice);

    KeychainHelper::State keyring() const { return m.keychain.state(); }
    const QString& environmentFile() const { return m.environmentFile; }

private:
    Task<LaneState> lane(ModelUse use);

    Dependencies m;
};

} // namespace pobblewig
