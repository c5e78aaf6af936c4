#pragma once

#include <QString>

namespace pobblewig {

namespace ProviderRouting {

/// A named route to a model.
enum class Lane { main, librarian, vision };

} // namespace ProviderRouting

/// Of the main and the vision model.
struct MainModelConfig {
    QString provider;
    QString baseURL;
    QString modelID;
    int maxOutputTokens = 1024;
};

/// Of the librarian and the meme classifier.
struct LibrarianModelConfig {
    QString baseURL;
    QString modelID;
    double temperature = 0.2;
    int maxOutputTokens = 1200;
};

} // namespace pobblewig
