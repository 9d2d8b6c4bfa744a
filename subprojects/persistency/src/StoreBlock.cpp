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
    const auto it = other.tables_.find(table);
    if (it == other.tables_.end()) return false;
    for (const auto& [staleTable, node] : other.stale_)
        if (staleTable == table) return false;
    tables_[table] = std::move(it->second);
    other.tables_.erase(it);
    return true;
}

const SqlRows& StoreBlock::none() {
    static const SqlRows empty;
    return empty;
}
