#pragma once

#include "foundation/JSONValue.h"

#include <map>

namespace pobblewig {

/// A structured fact under a dotted section path, identified by path and title.
struct ReferenceItem {
    QUuid id;
    QString path;
    QString title;
    QString summary;
    /// For example the due date and the course of a deadline.
    std::map<QString, JSONValue> details;
    /// One word for who wrote it.
    QString source;
    TimePoint createdAt;
    TimePoint updatedAt;

    bool operator==(const ReferenceItem&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("id", &ReferenceItem::id),
            required("path", &ReferenceItem::path), required("title", &ReferenceItem::title),
            required("summary", &ReferenceItem::summary),
            required("details", &ReferenceItem::details),
            required("source", &ReferenceItem::source),
            required("createdAt", &ReferenceItem::createdAt),
            required("updatedAt", &ReferenceItem::updatedAt) };
    }
};

struct ReferenceSectionMeta {
    QString path;
    QString title;
    /// One line about what belongs here.
    QString summary;
    bool isCustom = false;
    /// An unconfirmed section holds no items and is hidden from the model until the user confirms
    /// it.
    bool confirmed = true;

    bool operator==(const ReferenceSectionMeta&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("path", &ReferenceSectionMeta::path),
            required("title", &ReferenceSectionMeta::title),
            required("summary", &ReferenceSectionMeta::summary),
            required("isCustom", &ReferenceSectionMeta::isCustom),
            required("confirmed", &ReferenceSectionMeta::confirmed) };
    }
};

/// The contents of "reference.json".
struct ReferenceMemoryData {
    int version = 1;
    /// In the order in which they were added.
    std::vector<ReferenceItem> items;
    std::vector<ReferenceSectionMeta> sections;

    bool operator==(const ReferenceMemoryData&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("version", &ReferenceMemoryData::version),
            required("items", &ReferenceMemoryData::items),
            required("sections", &ReferenceMemoryData::sections) };
    }
};

} // namespace pobblewig
