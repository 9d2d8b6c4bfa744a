#include <tarvo/persistency/StoreBlock.h>

#include <cstdlib>

std::map<int, SqlRows> StoreBlock::group(SqlRows rows) {
    std::map<int, SqlRows> byNode;
    for (SqlRow& row : rows) {
        const int node = row.front() ? std::atoi(row.front()->c_str()) : 0;
        byNode[node].push_back(std::move(row));
    }
    return byNode;
}

const std::map<int, SqlRows>* StoreBlock::loaded(const std::string& table) const {
    const auto it = tables_.find(table);
    return it == tables_.end() ? nullptr : &it->second;
}

bool StoreBlock::take(StoreBlock& other, const std::string& table) {
    std::optional<std::map<int, SqlRows>> rows = other.release(table);
    if (rows) tables_[table] = std::move(*rows);
    return rows.has_value();
}

std::optional<std::map<int, SqlRows>> StoreBlock::release(const std::string& table) {
    const auto it = tables_.find(table);
    if (it == tables_.end()) return std::nullopt;
    for (const auto& [staleTable, node] : stale_)
        if (staleTable == table) return std::nullopt;
    std::map<int, SqlRows> rows = std::move(it->second);
    tables_.erase(it);
    return rows;
}

const SqlRows& StoreBlock::none() {
    static const SqlRows empty;
    return empty;
}
