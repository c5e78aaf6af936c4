#pragma once

#include "activity/AppCategory.h"
#include "foundation/JSONCodec.h"
#include "settings/CoachMode.h"

namespace pobblewig {

/// What a rule watches, and when it fires.
struct RuleTrigger {
    enum class Kind { application, category };

    Kind kind = Kind::application;
    /// Parts of an application's name or window title. Case is ignored.
    std::vector<QString> applicationNames;
    std::vector<QString> bundleIdentifiers;
    /// Parts of a window title.
    std::vector<QString> domains;
    std::optional<AppCategory> category = std::nullopt;
    int thresholdMinutes = 0;

    bool operator==(const RuleTrigger&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using T = RuleTrigger;
        return std::tuple { required("kind", &T::kind),
            required("applicationNames", &T::applicationNames),
            required("bundleIdentifiers", &T::bundleIdentifiers), required("domains", &T::domains),
            optional("category", &T::category),
            required("thresholdMinutes", &T::thresholdMinutes) };
    }
};

/// From the full hour of the start to that of the end, in local time. Equal hours give an empty
/// window.
struct TimeWindow {
    int startHour = 0;
    int endHour = 0;

    /// A window that ends before it starts continues past midnight.
    bool contains(int hour) const;

    bool operator==(const TimeWindow&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { required("startHour", &TimeWindow::startHour),
            required("endHour", &TimeWindow::endHour) };
    }
};

enum class InterventionStyle { gentle, direct, playful };

/// Checks in when the user has spent a certain time in an application or category.
struct AccountabilityRule {
    QUuid id;
    QString name;
    bool enabled = true;
    RuleTrigger trigger;
    /// The modes in which the rule does not fire.
    std::set<CoachMode> excludedModes;
    /// The hours in which the rule may fire; without a value, always.
    std::optional<TimeWindow> activeTimeWindow = std::nullopt;
    int cooldownMinutes = 0;
    InterventionStyle responseStyle = InterventionStyle::gentle;
    TimePoint createdAt;
    TimePoint updatedAt;

    /// Offered to the user as a disabled rule, never installed automatically.
    static AccountabilityRule youtubeTemplate(TimePoint now);

    bool operator==(const AccountabilityRule&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using R = AccountabilityRule;
        return std::tuple { required("id", &R::id), required("name", &R::name),
            required("enabled", &R::enabled), required("trigger", &R::trigger),
            required("excludedModes", &R::excludedModes),
            optional("activeTimeWindow", &R::activeTimeWindow),
            required("cooldownMinutes", &R::cooldownMinutes),
            required("responseStyle", &R::responseStyle), required("createdAt", &R::createdAt),
            required("updatedAt", &R::updatedAt) };
    }
};

} // namespace pobblewig
