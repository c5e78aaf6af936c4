#pragma once

#include "connections/SchoolSync.h"
#include "connections/classroom/ClassroomError.h"
#include "connections/classroom/ClassroomRecords.h"
#include "foundation/HTTPClient.h"
#include "foundation/Moment.h"

namespace pobblewig {

using ClassroomSyncState = SchoolSyncState;

/// Reads the user's courses and course work from Google Classroom into the reference memory.
class GoogleClassroomService {
public:
    template <typename Value>
    using Expected = tl::expected<Value, ClassroomError>;

    struct Parts {
        HTTPClient& http;
        ReferenceMemoryStore& reference;
        const Moment& moment;
        const std::optional<DataDirectory>& directory;
        /// Google's own address, up to the version.
        QString baseURL;
    };

    /// All but the directory must outlive the service.
    explicit GoogleClassroomService(const Parts& parts);

    SchoolSync& record() { return m_record; }
    const ClassroomSyncState& state() const { return m_record.state(); }

    /// Reads everything with a token for Google itself. A failure is stored in the state as well;
    /// what was stored before stays.
    Task<Expected<ClassroomSyncState>> sync(QString accessToken);

    /// The same through the product's backend, which holds the permission.
    Task<Expected<ClassroomSyncState>> syncViaBackend(QString sessionToken, QString backendBaseUrl);

    Task<Expected<std::vector<ClassroomCourse>>> fetchCourses(QString accessToken);
    Task<Expected<std::vector<ClassroomCourseWork>>> fetchCourseWork(
        QString accessToken, QString courseId);

private:
    using Reading = SchoolSync::Reading;

    /// Where the service is asked, and with what.
    struct Road {
        /// Up to "/courses".
        QString base;
        QString token;
    };

    tl::expected<Road, ClassroomError> direct(const QString& accessToken) const;
    Task<Expected<ClassroomSyncState>> syncBy(tl::expected<Road, ClassroomError> road);
    Task<Expected<Reading>> read(Road road);
    Task<Expected<void>> readCourse(Road road, ClassroomCourse course, Reading* reading);
    /// What may not be read counts as nothing handed in.
    Task<Expected<std::vector<ClassroomSubmission>>> submissions(Road road, QString courseId);
    Task<Expected<QByteArray>> get(Road road, QString path);

    template <typename Response>
    using Records = decltype(Response::records);
    template <typename Response>
    Task<Expected<Records<Response>>> list(Road road, QString path);

    HTTPClient& m_http;
    const Moment& m_moment;
    QString m_baseURL;
    SchoolSync m_record;
};

} // namespace pobblewig
