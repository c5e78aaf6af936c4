#pragma once

#include "wire/ModelDesk.h"

/// The models and where they are named, in words.
namespace pobblewig::LaneTexts {

/// What a model does, such as "Takes notes".
QString name(ModelUse use);

/// Sentences.
QString state(const LaneState& lane);
QString keyring(KeychainHelper::State state);

} // namespace pobblewig::LaneTexts
