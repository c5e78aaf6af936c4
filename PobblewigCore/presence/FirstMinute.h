#pragma once

#include <QString>

#include <vector>

/// What a new user hears and is offered first.
namespace pobblewig::FirstMinute {

/// Something to try.
struct Suggestion {
    QString text;
    /// What the buddy says to it without a model; empty if the text goes to the model.
    QString answer = {};

    bool operator==(const Suggestion&) const = default;
};

enum class Model { configured, missing };

/// Who it is and how to talk with it, on two lines.
QString greeting();

/// What it sees, and how to stop that.
QString sight();

/// Three things that work with the model at hand, or without one.
std::vector<Suggestion> suggestions(Model model);

} // namespace pobblewig::FirstMinute
