#include "interventions/DeadlineSource.h"

#include "connections/canvas/CanvasSyncLogic.h"
#include "connections/classroom/ClassroomSyncLogic.h"

namespace pobblewig {

std::vector<DeadlineSource> deadlineSources(CanvasFeature& canvas, ClassroomFeature& classroom)
{
    return {
        {
            .feature = canvas,
            .triggerType = QStringLiteral("canvas_deadline"),
            .logName = QStringLiteral("canvas"),
            .recordName = QStringLiteral("Canvas"),
            .service = QStringLiteral("Canvas"),
            .isEnabled = &AppSettings::canvasDeadlineRemindersEnabled,
            .windowHours = &AppSettings::canvasDeadlineReminderHours,
            .candidates = &CanvasSyncLogic::reminderCandidates,
            .reminderKey = &CanvasSyncLogic::reminderKey,
        },
        {
            .feature = classroom,
            .triggerType = QStringLiteral("classroom_deadline"),
            .logName = QStringLiteral("classroom"),
            .recordName = QStringLiteral("Classroom"),
            .service = QStringLiteral("Google Classroom"),
            .isEnabled = &AppSettings::classroomDeadlineRemindersEnabled,
            .windowHours = &AppSettings::classroomDeadlineReminderHours,
            .candidates = &ClassroomSyncLogic::reminderCandidates,
            .reminderKey = &ClassroomSyncLogic::reminderKey,
        },
    };
}

} // namespace pobblewig
