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
        /// A part of the model's thoughts. Empty if there is none.
        QString thought;
        std::optional<std::vector<ToolCallDelta>> toolCalls;
    };
    struct Choice {
        std::optional<Delta> delta;
        /// Whether the reply has ended at its length limit.
        bool isCutOff = false;
    };
    struct Usage {
        std::optional<int> promptTokens;
        std::optional<int> completionTokens;
    };

    /// What the server reports in place of the rest of the reply.
    struct Error {
        /// An HTTP status, where the server gives one.
        std::optional<int> status;
        /// The server's words, or the whole error as JSON if it has none.
        QString message;
    };

    std::optional<std::vector<Choice>> choices;
    std::optional<Usage> usage;
    std::optional<Error> error;

    /// Returns nothing for text that is not JSON, or that has a value of the wrong type.
    static std::optional<StreamChunk> decode(QByteArrayView json);
};

} // namespace pobblewig
