#pragma once

#include "foundation/JSONValue.h"
#include "mascots/MascotColorScheme.h"
#include "settings/AppSettings.h"

/// The settings whose values are more than a number or a switch. `read` gives nothing for a value
/// that the assistant may not set, `refusal` says what it may, `write` says what now holds.
namespace pobblewig::SettingForms {

struct Mode {
    static std::optional<CoachMode> read(const JSONValue& value, const AppSettings& current);
    static QString refusal(const AppSettings& current);
    static QString write(CoachMode mode, AppSettings& settings);
};

struct Roles {
    using Value = std::set<AssistantRole>;
    static std::optional<Value> read(const JSONValue& value, const AppSettings& current);
    static QString refusal(const AppSettings& current);
    static QString write(const Value& roles, AppSettings& settings);
};

/// Case and surrounding space do not matter.
struct Persona {
    static std::optional<CompanionPersona> read(const JSONValue& value, const AppSettings& current);
    static QString refusal(const AppSettings& current);
    static QString write(CompanionPersona persona, AppSettings& settings);
};

/// "An Axolotl" will do. Colours that the new mascot lacks become its first ones.
struct Form {
    static std::optional<Mascot> read(const JSONValue& value, const AppSettings& current);
    static QString refusal(const AppSettings& current);
    static QString write(Mascot mascot, AppSettings& settings);
};

/// The colours of the current mascot only.
struct ColorScheme {
    static std::optional<MascotColorScheme> read(
        const JSONValue& value, const AppSettings& current);
    static QString refusal(const AppSettings& current);
    static QString write(const MascotColorScheme& scheme, AppSettings& settings);
};

struct ObservationPause {
    static std::optional<bool> read(const JSONValue& value, const AppSettings& current);
    static QString refusal(const AppSettings& current);
    static QString write(bool paused, AppSettings& settings);
};

/// The password managers stay, whatever is asked.
struct ExcludedApps {
    using Value = std::vector<QString>;
    static std::optional<Value> read(const JSONValue& value, const AppSettings& current);
    static QString refusal(const AppSettings& current);
    static QString write(Value ids, AppSettings& settings);
};

struct CanvasURL {
    static std::optional<QString> read(const JSONValue& value, const AppSettings& current);
    static QString refusal(const AppSettings& current);
    static QString write(const QString& url, AppSettings& settings);
};

/// Replaces all folders; each gets a new id.
struct DataSources {
    using Value = std::vector<AppDataSource>;
    static std::optional<Value> read(const JSONValue& value, const AppSettings& current);
    static QString refusal(const AppSettings& current);
    static QString write(Value sources, AppSettings& settings);
};

} // namespace pobblewig::SettingForms
