#pragma once

#include "AppCoordinator.h"
#include "desktop/chat/ScriptedChat.h"
#include "support/FakeKeychain.h"
#include "support/ScriptedHTTPClient.h"
#include "support/ScriptedModels.h"

namespace pobblewig {

/// The parts of a coordinator that keeps its files in a folder and asks one model.
inline AppCoordinator::Parts scriptedParts(
    const QString& folder, LLMProvider& model, LLMProvider* librarian = nullptr)
{
    auto models = std::make_unique<ScriptedModels>();
    models->main = &model;
    models->librarian = librarian;
    return {
        .directory = DataDirectory(QDir(folder)),
        .http = std::make_unique<ScriptedHTTPClient>(),
        .keychain = std::make_unique<FakeKeychain>(),
        .environment = [] { return Environment(); },
        .wording = PlatformWording::linuxDesktop,
        .moment = { [] { return ScriptedChat::now; }, [] { return Calendar(); } },
        .models = std::move(models),
    };
}

} // namespace pobblewig
