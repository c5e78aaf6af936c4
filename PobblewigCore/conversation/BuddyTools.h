#pragma once

#include "prompts/PlatformWording.h"
#include "prompts/ToolLines.h"
#include "tools/Tool.h"
#include "wire/LLMMessage.h"

#include <set>
#include <vector>

namespace pobblewig {

/// The functions that a model is offered, built from the tools' records.
///
/// Lives on the main thread.
class BuddyTools {
public:
    enum class Offered { no, yes };

    struct Offer {
        /// Tools that read.
        Offered retrieval = Offered::no;
        Offered screenCapture = Offered::no;
        Offered situation = Offered::yes;
        Offered memory = Offered::yes;
        /// The names of the deferred tools that were loaded.
        std::set<QString> expanded = {};
    };

    /// Adds the turn's own tools to those of the features.
    BuddyTools(std::vector<Tool> ofFeatures, const PlatformWording& wording);

    /// In the order of the groups. All actions are offered.
    std::vector<LLMToolDefinition> offered(const Offer& offer) const;

    /// Returns null for an unknown name.
    const Tool* find(const QString& name) const;

    /// The lines about tools in the system prompt.
    const ToolLines& lines() const { return m_lines; }

private:
    struct Entry {
        Tool tool;
        /// Parsed when the tool is first offered.
        mutable std::optional<LLMToolDefinition> definition = {};
    };

    static const LLMToolDefinition& definition(const Entry& entry);

    std::vector<Entry> m_entries;
    ToolLines m_lines;
};

} // namespace pobblewig
