#pragma once

#include <QDateTime>
#include <QString>

#include <optional>
#include <vector>

namespace pobblewig {

/// What the user does at a moment, in the zone where they are.
struct TermAct {
    enum class Kind { launch, poll, say, startNewSession, switchMemoryOff, switchMemoryOn };

    Kind kind = Kind::poll;
    QDateTime at;
    QString text = {};
    /// Nothing where it depends on what a crash has left.
    std::optional<bool> endsSession = false;
};

/// A day on which the program is open.
struct TermDay {
    /// How the session is ended the next time that the program is open: whole, by a process that is
    /// killed in the middle, or by one after the other until one of them survives.
    enum class Ending { whole, killed, killedRepeatedly };

    int number = 0;
    QDate date;
    std::vector<TermAct> acts = {};
    /// How many sessions begin on it.
    int sessions = 1;
    Ending ending = Ending::whole;
};

/// What happens in a term, by the numbers of its days from 1 on.
struct TermPlan {
    struct Days {
        int first = 0;
        int last = -1;

        bool contain(int number) const { return number >= first && number <= last; }
    };

    QDate begin;
    int length = 0;
    /// When the clocks go back.
    QDate clockChange;
    /// The program is not opened; neither is it on the day before those abroad.
    Days absent = {};
    Days abroad = {};
    Days memoryOff = {};
    int fewestTurns = 2;
    int mostTurns = 2;
    /// Of so many days one ends by being killed.
    int daysBetweenKills = 1;
};

/// All days on which the program is open, in order. The same plan makes the same term.
std::vector<TermDay> writtenTerm(const TermPlan& plan);

/// A word that is only said while the memory is off.
QString unmemorableWord();

} // namespace pobblewig
