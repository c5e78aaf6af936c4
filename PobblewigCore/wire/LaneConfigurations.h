#pragma once

#include <QString>

namespace pobblewig {

namespace ProviderRouting {

/// A named route to a model of the product's own backend.
enum class Lane { main, librarian, vision };

} // namespace ProviderRouting

/// The purpose of a model. The meme classifier shares the librarian's route.
enum class ModelUse { main, vision, librarian, meme };

/// The configuration of the main or the vision model.
struct MainModelConfig {
    QString provider;
    QString baseURL;
    QString modelID;
    int maxOutputTokens = 1024;

    bool operator==(const MainModelConfig&) const = default;
};

/// The configuration of the librarian or the meme classifier.
struct LibrarianModelConfig {
    QString baseURL;
    QString modelID;
    double temperature = 0.2;
    int maxOutputTokens = 1200;

    bool operator==(const LibrarianModelConfig&) const = default;
};

} // namespace pobblewig
