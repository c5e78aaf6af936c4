#pragma once

#include "foundation/JSONCodec.h"

namespace pobblewig {

/// A folder that the assistant may read.
struct AppDataSource {
    QUuid id;
    QString name;
    QString rootPath;
    bool enabled = true;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple {
            required("id", &AppDataSource::id),
            required("name", &AppDataSource::name),
            required("rootPath", &AppDataSource::rootPath),
            required("enabled", &AppDataSource::enabled),
        };
    }

    bool operator==(const AppDataSource&) const = default;
};

} // namespace pobblewig
