#pragma once

#include "PobblewigDemoModel/DemoToolCall.h"
#include "PobblewigDemoModel/DemoTurn.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QStringList>

#include <functional>
#include <vector>

namespace pobblewig {

/// What the demo model means to do about a sentence.
struct DemoPlan {
    /// Said before the calls; without calls it is the answer.
    QString sentence;
    std::vector<DemoToolCall> calls = {};
    /// What follows from the results of the calls, and which tools that may need.
    std::function<DemoPlan(const DemoResults&)> next = {};
    QStringList nextTools = {};
    /// Said in place of the sentence once the app has asked for a better answer.
    QString afterNudge = {};
};

/// A sentence that fits a rule.
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

/// Asked in order: the first that fits answers.
using DemoRules = std::vector<DemoRule>;

} // namespace pobblewig
