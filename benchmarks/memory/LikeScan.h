#pragma once

#include <QString>

#include <string>
#include <vector>

struct sqlite3;

namespace pobblewig {

/// The peer of our searches: SQLite's LIKE over a table of texts, in memory.
class LikeScan {
public:
    explicit LikeScan(const std::vector<QString>& texts);
    ~LikeScan();
    Q_DISABLE_COPY_MOVE(LikeScan)

    /// How many texts hold every token.
    size_t count(const std::vector<std::string>& tokens) const;

private:
    void run(const char* sql) const;

    sqlite3* m_database = nullptr;
};

} // namespace pobblewig
