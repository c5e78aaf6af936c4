#pragma once

#include "foundation/JSONCodec.h"

namespace pobblewig {

struct CanvasTerm {
    std::optional<qint64> id;
    std::optional<QString> name;
    std::optional<QString> startAt;
    std::optional<QString> endAt;

    bool operator==(const CanvasTerm&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        return std::tuple { optional("id", &CanvasTerm::id), optional("name", &CanvasTerm::name),
            optional("start_at", &CanvasTerm::startAt), optional("end_at", &CanvasTerm::endAt) };
    }
};

struct CanvasEnrollmentScore {
    std::optional<double> computedCurrentScore;
    std::optional<QString> computedCurrentGrade;

    bool operator==(const CanvasEnrollmentScore&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using S = CanvasEnrollmentScore;
        return std::tuple { optional("computed_current_score", &S::computedCurrentScore),
            optional("computed_current_grade", &S::computedCurrentGrade) };
    }
};

struct CanvasCourse {
    qint64 id = 0;
    std::optional<QString> name;
    std::optional<QString> courseCode;
    std::optional<QString> workflowState;
    std::optional<CanvasTerm> term;
    std::optional<std::vector<CanvasEnrollmentScore>> enrollments;
    /// Of such a course the service tells nothing but the id.
    bool accessRestrictedByDate = false;

    bool operator==(const CanvasCourse&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using C = CanvasCourse;
        return std::tuple { required("id", &C::id), optional("name", &C::name),
            optional("course_code", &C::courseCode), optional("workflow_state", &C::workflowState),
            optional("term", &C::term), optional("enrollments", &C::enrollments),
            defaulted("access_restricted_by_date", &C::accessRestrictedByDate) };
    }
};

struct CanvasSubmission {
    std::optional<QString> workflowState;
    std::optional<double> score;
    std::optional<QString> submittedAt;

    bool operator==(const CanvasSubmission&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using S = CanvasSubmission;
        return std::tuple { optional("workflow_state", &S::workflowState),
            optional("score", &S::score), optional("submitted_at", &S::submittedAt) };
    }
};

struct CanvasAssignment {
    qint64 id = 0;
    std::optional<QString> name;
    std::optional<QString> dueAt;
    std::optional<double> pointsPossible;
    std::optional<QString> htmlURL;
    std::optional<CanvasSubmission> submission;
    /// "published", "unpublished" or "deleted".
    std::optional<QString> workflowState;

    bool operator==(const CanvasAssignment&) const = default;

    static constexpr auto jsonFields()
    {
        using namespace json;
        using A = CanvasAssignment;
        return std::tuple { required("id", &A::id), optional("name", &A::name),
            optional("due_at", &A::dueAt), optional("points_possible", &A::pointsPossible),
            optional("html_url", &A::htmlURL), optional("submission", &A::submission),
            optional("workflow_state", &A::workflowState) };
    }
};

} // namespace pobblewig
