#pragma once

#include "wire/LLMMessage.h"
#include "wire/StreamChunk.h"

#include <map>

namespace pobblewig {

/// Assembles the pieces of streamed tool calls.
class ToolCallAccumulator {
public:
    /// `position` is the place in the chunk's array, used where the server leaves out the index.
    ///
    /// A later id or name replaces an earlier one. The first signature stays, because the vendor
    /// sends it only once and later pieces must not erase it.
    void add(const ToolCallDelta& delta, int position);

    /// Whether these are more calls, or longer ones, than any model means.
    bool isTooMuch() const;

    /// The calls, by index. Calls without a name are dropped; calls without an id get one.
    std::vector<LLMToolCall> complete() const;

private:
    struct Partial {
        QString id;
        QString name;
        QString arguments;
        std::optional<QString> thoughtSignature;
    };

    std::map<int, Partial> m_partials;
    qsizetype m_characters = 0;
};

} // namespace pobblewig
