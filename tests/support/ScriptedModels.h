#pragma once

#include "support/BorrowedProvider.h"
#include "wire/ModelProviding.h"

namespace pobblewig {

/// Lends the models that a test sets; null where there is none.
struct ScriptedModels : ModelProviding {
    LLMProvider* main = nullptr;
    LLMProvider* vision = nullptr;
    LLMProvider* librarian = nullptr;
    LibrarianModelConfig librarianSettings;
    MainModelConfig visionSettings;
    std::map<ModelUse, QString> chosen;

    Task<std::unique_ptr<LLMProvider>> makeProvider(ModelUse use) override
    {
        if (use == ModelUse::main)
            return BorrowedProvider::lent(main);
        return BorrowedProvider::lent(use == ModelUse::vision ? vision : librarian);
    }
    Task<MainModelConfig> mainConfig() override { co_return MainModelConfig(); }
    Task<MainModelConfig> visionConfig() override { co_return MainModelConfig(visionSettings); }
    Task<LibrarianModelConfig> librarianConfig() override
    {
        co_return LibrarianModelConfig(librarianSettings);
    }
    void chooseModel(ModelUse use, const QString& modelID) override { chosen[use] = modelID; }
};

} // namespace pobblewig
