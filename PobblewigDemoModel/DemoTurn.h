#pragma once

#include "PobblewigDemoModel/ChatRequest.h"

#include <QString>

#include <set>
#include <vector>

namespace pobblewig {

/// What a tool answered.
struct DemoToolResult {
    QString name;
    /// What it was called with, where the conversation tells.
    QString argumentsText;
    QString text;
};

using DemoResults = std::vector<DemoToolResult>;

/// The newest turn of a conversation: what the user said, and how far the answer has come.
struct DemoTurn {
    /// How the model may call tools: not at all, by function calls, or by blocks of text.
    enum class Protocol { none, functions, blocks };

    static DemoTurn read(const ChatRequest& request);

    bool offers(const QString& tool) const;

    /// At most 2000 characters of it.
    QString question;
    bool hasPicture = false;
    /// Nothing was answered before it.
    bool isFirst = true;
    DemoResults results;
    /// A picture came after the question, as the result of a tool.
    bool hasScreenshot = false;
    /// The app was not content with the answer and asks for a better one.
    bool wasNudged = false;
    Protocol protocol = Protocol::none;
    std::set<QString> functions;
    /// What asks the app to change something, and not to look something up.
    std::set<QString> changes;
};

} // namespace pobblewig
