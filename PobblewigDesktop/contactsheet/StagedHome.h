#pragma once

#include "AppCoordinator.h"
#include "PobblewigDesktop/contactsheet/StagedChat.h"

#include <QTemporaryDir>

namespace pobblewig {

/// The program of a user with some weeks of history, without a network, at a fixed moment.
class StagedHome {
public:
    static constexpr TimePoint now = StagedChat::now;

    StagedHome();

    static Calendar calendar();
    static Moment moment()
    {
        return { [] { return now; }, calendar };
    }
    QDir directory() const { return QDir(m_home.path()); }
    /// Fills the next days of a user whose school and calendar are connected.
    void addComingUp();

    AppCoordinator& coordinator() { return *m_coordinator; }

private:
    void addActivity() const;
    void addUsage() const;
    void addNotes();
    void addReference();
    void addDays();

    QTemporaryDir m_home;
    StagedModel::Prompter m_prompter;
    std::optional<AppCoordinator> m_coordinator;
};

} // namespace pobblewig
