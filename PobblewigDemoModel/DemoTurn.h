#pragma once

#include "PobblewigDemoModel/ChatRequest.h"

#include <QString>

#include <set>
#include <vector>

namespace pobblewig {

/// The answer of a tool.
struct DemoToolResult {
    QString name;
    /// The arguments of the call, if the conversation shows them.
    QString argumentsText;
    QString text;
};

using DemoResults = std::vector<DemoToolResult>;

/// The latest turn of a conversation: what the user said, and how far the answer has progressed.
struct DemoTurn {
    /// How the model may call tools: not at all, by function calls, or by blocks of text.
    enum class Protocol { none, functions, blocks };

    static DemoTurn read(const ChatRequest& request);

    bool offers(const QString& tool) const;

    /// Cut to 2000 characters.
    QString question;
    bool hasPicture = false;
    /// Whether there is no earlier answer.
    bool isFirst = true;
    DemoResults results;
    /// Whether a picture arrived after the question, as the result of a tool.
    bool hasScreenshot = false;
    /// Whether the app rejected the answer and asked for a better one.
    bool wasNudged = false;
    Protocol protocol = Protocol::none;
    std::set<QString> functions;
    /// The tools that change something, as opposed to looking it up.
    std::set<QString> changes;
};

} // namespace pobblewig
