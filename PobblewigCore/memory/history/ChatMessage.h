#pragma once

#include "foundation/JSONCodec.h"

namespace pobblewig {

struct ChatMessage {
    enum class Role { user, assistant, system };

    QUuid id;
    Role role = Role::user;
    QString text;
    TimePoint timestamp;
    /// Whether a picture was sent with this message. The picture itself is never kept.
    bool hadImage = false;
    /// Not set for messages written while the memory was off; the librarian never reads them.
    std::optional<QUuid> sessionID = std::nullopt;
    /// Set on a message that the program sent unprompted.
    std::optional<QUuid> relatedInterventionID = std::nullopt;

    /// Set on a message that tells about a proposal: the proposal's id.
    std::optional<QUuid> proposalID = std::nullopt;

    /// Set on a reply that ended before the model was done: at its length limit, or by a failure.
    std::optional<bool> cutOff = std::nullopt;

    /// Set on a reply that the user stopped.
    std::optional<bool> stopped = std::nullopt;

    /// The answers whose place a reply has taken, oldest first.
    std::optional<std::vector<QString>> earlier = std::nullopt;

    std::vector<QString> earlierTexts() const { return earlier.value_or(std::vector<QString>()); }

    bool isCutOff() const { return cutOff.value_or(false); }
    bool isStopped() const { return stopped.value_or(false); }

    /// Whether the model can be asked to go on with it.
    bool isUnfinished() const { return isCutOff() || isStopped(); }

    bool operator==(const ChatMessage&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("id", &ChatMessage::id), required("role", &ChatMessage::role),
            required("text", &ChatMessage::text), required("timestamp", &ChatMessage::timestamp),
            defaulted("hadImage", &ChatMessage::hadImage),
            optional("sessionID", &ChatMessage::sessionID),
            optional("relatedInterventionID", &ChatMessage::relatedInterventionID),
            optional("proposalID", &ChatMessage::proposalID),
            optional("cutOff", &ChatMessage::cutOff), optional("stopped", &ChatMessage::stopped),
            optional("earlier", &ChatMessage::earlier) };
    }
};

} // namespace pobblewig
