#pragma once

#include "connections/canvas/CanvasFeature.h"
#include "connections/classroom/ClassroomFeature.h"

namespace pobblewig {

/// A connection whose deadlines are spoken of.
struct DeadlineSource {
    using Items = std::vector<ReferenceItem>;

    SchoolFeature& feature;
    /// "canvas_deadline" or "classroom_deadline".
    QString triggerType;
    /// In log messages and records: "canvas", "Canvas".
    QString logName;
    QString recordName;
    /// For the model: "Canvas" or "Google Classroom".
    QString service;
    bool AppSettings::*isEnabled;
    int AppSettings::*windowHours;
    Items (*candidates)(const Items& items, TimePoint now, int windowHours,
        const std::set<QString>& remindedKeys, const Calendar& calendar);
    QString (*reminderKey)(const ReferenceItem& item, TimePoint now, const Calendar& calendar);
};

std::vector<DeadlineSource> deadlineSources(CanvasFeature& canvas, ClassroomFeature& classroom);

} // namespace pobblewig
