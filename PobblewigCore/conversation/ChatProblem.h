#pragma once

#include "foundation/Time.h"

#include <QString>
#include <QUrl>

#include <optional>
#include <vector>

namespace pobblewig {

/// The model that a request went to.
struct AskedModel {
    QUrl server;
    QString modelID;
    /// For messages with a picture.
    bool isForPictures = false;
    /// Reached through the product's own backend.
    bool isManaged = false;

    bool operator==(const AskedModel&) const = default;
};

/// Why a turn failed, in words for the user.
struct ChatProblem {
    enum class Action { none, retry, newSession, chooseModel, setUp };

    /// One sentence.
    QString what;
    /// What the user can do; can be empty.
    QString advice;
    Action action = Action::retry;
    /// The server's own words, or the lines of the set-up. Empty if there are none.
    QString details;
    /// When the server wants to be asked again.
    std::optional<TimePoint> retryAt = std::nullopt;
    /// The models to choose from.
    std::vector<QString> models = {};

    bool operator==(const ChatProblem&) const = default;
};

} // namespace pobblewig
