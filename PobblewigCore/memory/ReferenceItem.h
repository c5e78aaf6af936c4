#pragma once

#include "foundation/JSONValue.h"

#include <map>

namespace pobblewig {

/// A structured fact under a dotted section path. Path and title are its identity.
struct ReferenceItem {
    QUuid id;
    QString path;
    QString title;
    QString summary;
    /// Such as the due date and the course of a deadline.
    std::map<QString, JSONValue> details;
    /// Who wrote it, in a word.
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
    /// What belongs here, in a line.
    QString summary;
    bool isCustom = false;
    /// Until the user confirms a section it holds no items and the model does not see it.
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

/// The whole of "reference.json".
struct ReferenceMemoryData {
    int version = 1;
    /// In the order of their arrival.
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
