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
    /// How its session is ended when the program is next open: as it should be, or by a process
    /// that is killed meanwhile. That one may have been open since the day began, may begin with
    /// the end, or may have come as far as making a week.
    enum class Ending { whole, killedAfterTheDay, killedAtLaunch, killedInTheWeek };

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
    /// Before each of so many days the program is not ended; before all others it is, or killed.
    int daysBetweenNights = 1;
};

/// The days on which the program is open, in order.
using Term = std::vector<TermDay>;

/// The same plan makes the same term.
Term writtenTerm(const TermPlan& plan);

/// A word that is only said while the memory is off.
QString unmemorableWord();

} // namespace pobblewig
