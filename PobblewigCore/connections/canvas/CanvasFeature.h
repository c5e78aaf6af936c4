#pragma once

#include "connections/DatedIndex.h"
#include "connections/SchoolFeature.h"
#include "connections/canvas/CanvasService.h"

namespace pobblewig {

struct CanvasState {
    CanvasSyncState sync;
    bool isSyncing = false;
    /// Whether a token is known; false until one is asked for.
    bool hasToken = false;

    bool operator==(const CanvasState&) const = default;
};

/// The courses and deadlines of a Canvas site.
class CanvasFeature final : public SchoolFeature {
public:
    explicit CanvasFeature(const Parts& parts);

    /// Stores what is not blank, switches the sync on and syncs at once.
    Task<> connect(QString address, QString token);

    /// Forgets the token and switches the sync off. What was read stays.
    Task<> disconnect();

    /// Whether the user has set it up.
    bool isConnected() const { return isEnabled(); }

    CanvasService& service() { return m_service; }
    SchoolSync& record() override { return m_service.record(); }

    std::vector<QString> situation(TimePoint now) const override;
    void publish(PublishedState& state) const override;

protected:
    bool isEnabled() const override;
    int intervalMinutes() const override;
    Task<> sync() override;
    QString name() const override { return QStringLiteral("canvas"); }

private:
    /// An empty address stays as it is.
    void switchOn(const QString& address);
    void switchOff();

    CanvasService m_service;
    mutable DatedIndex m_deadlines;
    bool m_hasToken = false;
};

} // namespace pobblewig
