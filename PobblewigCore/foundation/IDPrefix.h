#pragma once

#include <QString>
#include <QUuid>

#include <variant>
#include <vector>

namespace pobblewig {

/// The element that a handle stands for.
template <typename Element>
struct IDPrefixResolution {
    struct Unknown { };
    struct Ambiguous { };

    std::variant<Unknown, Ambiguous, Element> value;

    const Element* found() const& { return std::get_if<Element>(&value); }
    const Element* found() && = delete;
    bool isAmbiguous() const { return std::holds_alternative<Ambiguous>(value); }
};

/// Short handles by which a model refers to records.
namespace IDPrefix {

/// The first 8 characters, in lower case.
QString shortID(const QUuid& id);

bool matches(const QUuid& id, const QString& prefix);

/// Accepts a whole id as well, in upper or lower case, and a handle as it is printed:
/// "[id:1a2b3c4d]". An empty prefix matches every element.
template <typename Element>
IDPrefixResolution<Element> resolve(const QString& prefix, const std::vector<Element>& elements)
{
    using Resolution = IDPrefixResolution<Element>;
    const Element* found = nullptr;
    for (const auto& element : elements) {
        if (!matches(element.id, prefix))
            continue;
        if (found)
            return { typename Resolution::Ambiguous() };
        found = &element;
    }
    return found ? Resolution { *found } : Resolution { typename Resolution::Unknown() };
}

} // namespace IDPrefix

} // namespace pobblewig
