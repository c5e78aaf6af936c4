#pragma once

#include "connections/SchoolFeature.h"
#include "connections/classroom/GoogleClassroomService.h"

namespace pobblewig {

struct ClassroomState {
    ClassroomSyncState sync;
    bool isSyncing = false;
    /// Whether a token is known; false until one is asked for.
    bool hasToken = false;

    bool operator==(const ClassroomState&) const = default;
};

/// The courses and deadlines of Google Classroom.
class ClassroomFeature final : public SchoolFeature {
public:
    /// How the service is reached.
    struct Roads {
        QString baseURL;
        QString backendBaseUrl;
        /// Of the signed-in user; empty without one.
        std::function<QString()> sessionToken = [] { return QString(); };
    };

    ClassroomFeature(const Parts& parts, Roads roads);

    /// Stores a token that is not blank, switches the sync on and syncs at once.
    Task<> connect(QString token);

    /// Forgets the token and switches the sync off. What was read stays.
    Task<> disconnect();

    GoogleClassroomService& service() { return m_service; }
    SchoolSync& record() override { return m_service.record(); }

    void publish(PublishedState& state) const override;

protected:
    bool isEnabled() const override;
    int intervalMinutes() const override;
    Task<> sync() override;
    QString name() const override { return QStringLiteral("classroom"); }

private:
    void setEnabled(bool isEnabled);

    Roads m_roads;
    GoogleClassroomService m_service;
    bool m_hasToken = false;
};

} // namespace pobblewig
