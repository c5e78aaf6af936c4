#pragma once

#include "prompts/PlatformWording.h"
#include "prompts/ToolLines.h"
#include "tools/Tool.h"
#include "wire/LLMMessage.h"

#include <set>
#include <vector>

namespace pobblewig {

/// The functions that a model is offered, made of the tools' records.
///
/// Lives on the main thread.
class BuddyTools {
public:
    enum class Offered { no, yes };

    struct Offer {
        /// Those that read.
        Offered retrieval = Offered::no;
        Offered screenCapture = Offered::no;
        Offered situation = Offered::yes;
        Offered memory = Offered::yes;
        /// The names of deferred tools that were loaded.
        std::set<QString> expanded = {};
    };

    /// Adds those of a turn and the actions to the features'.
    BuddyTools(std::vector<Tool> ofFeatures, const PlatformWording& wording);

    /// In the order of the groups; the actions are always offered.
    std::vector<LLMToolDefinition> offered(const Offer& offer) const;

    /// Null for an unknown name.
    const Tool* find(const QString& name) const;

    /// What the system prompt tells of them.
    const ToolLines& lines() const { return m_lines; }

private:
    struct Entry {
        Tool tool;
        /// Its schema is parsed when it is first offered.
        mutable std::optional<LLMToolDefinition> definition = {};
    };

    static const LLMToolDefinition& definition(const Entry& entry);

    std::vector<Entry> m_entries;
    ToolLines m_lines;
};

} // namespace pobblewig
