#include "activity/ActivitySummaryLogic.h"

#include <QStringList>

#include <cmath>

namespace pobblewig {

namespace {

constexpr std::ptrdiff_t mostApplications = 6;

using Share = std::pair<QString, double>;

QString text(const Share& share)
{
    const auto minutes = std::trunc(share.second / 60);
    return QStringLiteral("%1 %2 min").arg(share.first, QString::number(minutes, 'f', 0));
}

} // namespace

QString ActivitySummaryLogic::activitySummary(
    const std::vector<ActivitySession>& sessions, TimePoint from, TimePoint to)
{
    std::map<QString, double> seconds;
    for (const auto& session : sessions) {
        if (from <= session.startedAt && session.startedAt <= to)
            seconds[session.applicationName] += session.durationSeconds;
    }
    std::vector<Share> shares(seconds.begin(), seconds.end());
    std::ranges::stable_sort(shares, std::ranges::greater(), &Share::second);
    if (std::ssize(shares) > mostApplications)
        shares.erase(shares.begin() + mostApplications, shares.end());
    QStringList texts;
    std::ranges::transform(shares, std::back_inserter(texts), text);
    return texts.join(u"; ");
}

} // namespace pobblewig
