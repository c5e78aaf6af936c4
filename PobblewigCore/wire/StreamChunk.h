#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>
#include <vector>

namespace pobblewig {

/// A piece of a tool call; the pieces of one call share an index.
struct ToolCallDelta {
    struct Function {
        std::optional<QString> name;
        std::optional<QString> arguments;
    };
    struct Google {
        std::optional<QString> thoughtSignature;
    };
    struct ExtraContent {
        std::optional<Google> google;
    };

    std::optional<int> index;
    std::optional<QString> id;
    std::optional<Function> function;
    std::optional<ExtraContent> extraContent;
};

/// One event of a streamed reply. Servers omit fields freely, so any field may be absent.
struct StreamChunk {
    struct Delta {
        std::optional<QString> content;
        std::optional<std::vector<ToolCallDelta>> toolCalls;
    };
    struct Choice {
        std::optional<Delta> delta;
    };
    struct Usage {
        std::optional<int> promptTokens;
        std::optional<int> completionTokens;
    };

    std::optional<std::vector<Choice>> choices;
    std::optional<Usage> usage;

    /// Returns nothing for text that is not JSON, or that has a value of the wrong type.
    static std::optional<StreamChunk> decode(QByteArrayView json);
};

} // namespace pobblewig
