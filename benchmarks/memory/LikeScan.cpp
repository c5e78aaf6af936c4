#include "LikeScan.h"

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>

namespace pobblewig {

namespace {

void require(bool isTrue, sqlite3* database)
{
    if (isTrue)
        return;
    std::fprintf(stderr, "SQLite: %s\n", sqlite3_errmsg(database));
    std::exit(1);
}

sqlite3_stmt* prepared(sqlite3* database, const std::string& sql)
{
    sqlite3_stmt* statement = nullptr;
    const auto outcome = sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr);
    require(outcome == SQLITE_OK, database);
    return statement;
}

} // namespace

LikeScan::LikeScan(const std::vector<QString>& texts)
{
    require(sqlite3_open(":memory:", &m_database) == SQLITE_OK, m_database);
    run("CREATE TABLE t (id INTEGER PRIMARY KEY, text TEXT); BEGIN");
    auto* insert = prepared(m_database, "INSERT INTO t (text) VALUES (?)");
    for (const auto& text : texts) {
        const auto bytes = text.toUtf8();
        sqlite3_bind_text(insert, 1, bytes.constData(), int(bytes.size()), SQLITE_TRANSIENT);
        require(sqlite3_step(insert) == SQLITE_DONE, m_database);
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    run("COMMIT");
}

LikeScan::~LikeScan()
{
    sqlite3_close(m_database);
}

size_t LikeScan::count(const std::vector<std::string>& tokens) const
{
    std::string sql = "SELECT id FROM t WHERE 1";
    for (const auto& token : tokens)
        sql += " AND text LIKE '%" + token + "%'";
    auto* select = prepared(m_database, sql);
    size_t count = 0;
    auto outcome = sqlite3_step(select);
    for (; outcome == SQLITE_ROW; outcome = sqlite3_step(select))
        ++count;
    require(outcome == SQLITE_DONE, m_database);
    sqlite3_finalize(select);
    return count;
}

void LikeScan::run(const char* sql) const
{
    require(sqlite3_exec(m_database, sql, nullptr, nullptr, nullptr) == SQLITE_OK, m_database);
}

} // namespace pobblewig
