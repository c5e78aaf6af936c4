#pragma once

#include "wire/LLMMessage.h"
#include "wire/StreamChunk.h"

#include <map>

namespace pobblewig {

/// Puts the pieces of streamed tool calls together.
class ToolCallAccumulator {
public:
    /// The position in its array stands in for the index that some servers leave out.
    ///
    /// A later id or name replaces an earlier one, but the first signature stays: the vendor sends
    /// it once, and later pieces must not wipe it.
    void add(const ToolCallDelta& delta, int position);

    /// By index. Calls without a name are dropped, those without an id get one.
    std::vector<LLMToolCall> complete() const;

private:
    struct Partial {
        QString id;
        QString name;
        QString arguments;
        std::optional<QString> thoughtSignature;
    };

    std::map<int, Partial> m_partials;
};

} // namespace pobblewig
