#include "coordination/semester/Semester.h"

namespace pobblewig {

Semester::Semester(std::vector<TermDay> days)
    : m_days(std::move(days))
{
}

void Semester::play(const std::function<void(const TermDay& day)>& dayIsOver)
{
    TermPlayer player(data(), ledger());
    for (const auto& day : m_days) {
        for (const auto& act : day.acts)
            player.play(act);
        dayIsOver(day);
    }
}

} // namespace pobblewig
