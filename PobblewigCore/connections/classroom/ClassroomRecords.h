#pragma once

#include "foundation/JSONCodec.h"

namespace pobblewig {

/// A day without a time zone. The service leaves out what is zero.
struct ClassroomDate {
    std::optional<int> year;
    std::optional<int> month;
    std::optional<int> day;

    bool operator==(const ClassroomDate&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using D = ClassroomDate;
        return std::tuple { optional("year", &D::year), optional("month", &D::month),
            optional("day", &D::day) };
    }
};

/// A time of the day in UTC. The service leaves out what is zero.
struct ClassroomTime {
    std::optional<int> hours;
    std::optional<int> minutes;
    std::optional<int> seconds;
    std::optional<int> nanos;

    bool operator==(const ClassroomTime&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using T = ClassroomTime;
        return std::tuple { optional("hours", &T::hours), optional("minutes", &T::minutes),
            optional("seconds", &T::seconds), optional("nanos", &T::nanos) };
    }
};

struct ClassroomCourse {
    QString id;
    std::optional<QString> name;
    std::optional<QString> section;
    std::optional<QString> descriptionHeading;
    std::optional<QString> ownerId;
    std::optional<QString> creationTime;
    std::optional<QString> updateTime;
    std::optional<QString> enrollmentCode;
    std::optional<QString> courseState;
    std::optional<QString> alternateLink;
    std::optional<QString> courseGroupEmail;

    bool operator==(const ClassroomCourse&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using C = ClassroomCourse;
        return std::tuple { required("id", &C::id), optional("name", &C::name),
            optional("section", &C::section),
            optional("descriptionHeading", &C::descriptionHeading),
            optional("ownerId", &C::ownerId), optional("creationTime", &C::creationTime),
            optional("updateTime", &C::updateTime), optional("enrollmentCode", &C::enrollmentCode),
            optional("courseState", &C::courseState), optional("alternateLink", &C::alternateLink),
            optional("courseGroupEmail", &C::courseGroupEmail) };
    }
};

struct ClassroomCourseWork {
    QString courseId;
    QString id;
    std::optional<QString> title;
    std::optional<QString> description;
    std::optional<QString> state;
    std::optional<QString> alternateLink;
    std::optional<QString> creationTime;
    std::optional<QString> updateTime;
    std::optional<ClassroomDate> dueDate;
    std::optional<ClassroomTime> dueTime;
    std::optional<double> maxPoints;
    std::optional<QString> workType;
    std::optional<QString> assigneeMode;

    bool operator==(const ClassroomCourseWork&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using W = ClassroomCourseWork;
        return std::tuple { defaulted("courseId", &W::courseId), required("id", &W::id),
            optional("title", &W::title), optional("description", &W::description),
            optional("state", &W::state), optional("alternateLink", &W::alternateLink),
            optional("creationTime", &W::creationTime), optional("updateTime", &W::updateTime),
            optional("dueDate", &W::dueDate), optional("dueTime", &W::dueTime),
            optional("maxPoints", &W::maxPoints), optional("workType", &W::workType),
            optional("assigneeMode", &W::assigneeMode) };
    }
};

/// What the student has handed in.
struct ClassroomSubmission {
    QString courseWorkId;
    /// "TURNED_IN", "RETURNED" and others.
    std::optional<QString> state;
    std::optional<double> assignedGrade;

    bool operator==(const ClassroomSubmission&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using S = ClassroomSubmission;
        return std::tuple { required("courseWorkId", &S::courseWorkId),
            optional("state", &S::state), optional("assignedGrade", &S::assignedGrade) };
    }
};

/// One page of a list, which stands under a key. Absent is empty.
template <typename Record, const char* key>
struct ClassroomPage {
    std::vector<Record> records;
    QString nextPageToken;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using P = ClassroomPage;
        return std::tuple { defaulted(key, &P::records),
            defaulted("nextPageToken", &P::nextPageToken) };
    }
};

inline constexpr char classroomCoursesKey[] = "courses";
inline constexpr char classroomCourseWorkKey[] = "courseWork";
inline constexpr char classroomSubmissionsKey[] = "studentSubmissions";

using ClassroomCoursesResponse = ClassroomPage<ClassroomCourse, classroomCoursesKey>;
using ClassroomCourseWorkResponse = ClassroomPage<ClassroomCourseWork, classroomCourseWorkKey>;
using ClassroomSubmissionsResponse = ClassroomPage<ClassroomSubmission, classroomSubmissionsKey>;

} // namespace pobblewig
