#pragma once

#include "connections/SchoolSync.h"
#include "connections/canvas/CanvasError.h"
#include "connections/canvas/CanvasRecords.h"
#include "foundation/HTTPClient.h"
#include "foundation/Moment.h"

namespace pobblewig {

using CanvasSyncState = SchoolSyncState;

/// Reads the user's courses and assignments from a Canvas site into the reference memory.
class CanvasService {
public:
    template <typename Value>
    using Expected = tl::expected<Value, CanvasError>;

    /// All but the directory must outlive the service.
    CanvasService(HTTPClient& http, ReferenceMemoryStore& reference, const Moment& moment,
        const std::optional<DataDirectory>& directory);

    SchoolSync& record() { return m_record; }
    const CanvasSyncState& state() const { return m_record.state(); }

    /// Reads everything. A failure is stored in the state as well; what was stored before stays. A
    /// course that alone cannot be read does not keep the others from being read.
    Task<Expected<CanvasSyncState>> sync(QString baseURL, QString token);

    Task<Expected<std::vector<CanvasCourse>>> fetchCourses(QString baseURL, QString token);
    Task<Expected<std::vector<CanvasAssignment>>> fetchAssignments(
        QString baseURL, QString token, qint64 courseID);

private:
    using Reading = SchoolSync::Reading;

    Task<Expected<Reading>> read(QString baseURL, QString token);
    Task<Expected<void>> readCourse(
        QString baseURL, QString token, CanvasCourse course, Reading* reading);
    Task<Expected<HTTPResponse>> get(QUrl url, QString token);

    template <typename Record>
    Task<Expected<std::vector<Record>>> list(QString baseURL, QString path, QString token);

    void storeFailure(const CanvasError& error);

    HTTPClient& m_http;
    const Moment& m_moment;
    SchoolSync m_record;
};

} // namespace pobblewig
