#pragma once

#include "PobblewigDemoModel/DemoToolCall.h"
#include "PobblewigDemoModel/DemoTurn.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QStringList>

#include <functional>
#include <vector>

namespace pobblewig {

/// The demo model's plan for a sentence.
struct DemoPlan {
    /// The text before the calls, or the whole answer without calls.
    QString sentence;
    std::vector<DemoToolCall> calls = {};
    /// The plan that follows from the results of the calls, and the tools that it may need.
    std::function<DemoPlan(const DemoResults&)> next = {};
    QStringList nextTools = {};
    /// Replaces the sentence after the app has asked for a better answer.
    QString afterNudge = {};
};

/// A sentence that matches a rule.
struct DemoSentence {
    QRegularExpressionMatch match;
    QDateTime now;

    QString part(QStringView name) const { return match.captured(name).trimmed(); }
};

struct DemoRule {
    DemoRule(const QString& words, std::function<DemoPlan(const DemoSentence&)> planned)
        : pattern(words, QRegularExpression::CaseInsensitiveOption)
        , plan(std::move(planned))
    {
    }

    QRegularExpression pattern;
    std::function<DemoPlan(const DemoSentence&)> plan;
};

/// In order; the first rule that matches answers.
using DemoRules = std::vector<DemoRule>;

} // namespace pobblewig
