#include "folders/AppDataListing.h"

#include <algorithm>

namespace pobblewig {

namespace {

bool comesFirst(const AppDataEntry& left, const AppDataEntry& right)
{
    // A missing date is less than any other.
    return left.modified != right.modified ? left.modified > right.modified
                                           : left.name < right.name;
}

} // namespace

AppDataListing::AppDataListing(int limit, QString realPath)
    : m_limit(limit)
    , m_realPath(std::move(realPath))
{
}

std::vector<AppDataEntry> AppDataListing::newestFirst() const
{
    auto entries = m_newest;
    std::ranges::sort_heap(entries, comesFirst);
    return entries;
}

void AppDataListing::add(AppDataEntry entry)
{
    ++m_added;
    m_newest.push_back(std::move(entry));
    std::ranges::push_heap(m_newest, comesFirst);
    if (std::ssize(m_newest) <= m_limit)
        return;
    std::ranges::pop_heap(m_newest, comesFirst);
    m_newest.pop_back();
}

} // namespace pobblewig
