#ifndef TARVO_PERSISTENCY_STOREBLOCK_H
#define TARVO_PERSISTENCY_STOREBLOCK_H

#include <map>
#include <optional>
#include <string>
#include <vector>

using SqlRow = std::vector<std::optional<std::string>>;
using SqlRows = std::vector<SqlRow>;

// The rows of one block of the store, the nodes [first, last) that a node and its descendants own,
// grouped by node and fetched one table at a time when first asked for. Reading a tree through a block
// costs one query per table instead of several per node.
class StoreBlock {
public:
    StoreBlock(int first, int last) : first_(first), last_(last) {}

    bool covers(int id) const { return id >= first_ && id < last_; }
    int first() const { return first_; }
    int last() const { return last_; }

    // The rows of `table` that belong to node id. The first time a table is asked for, `load` gives all
    // its rows in the block, each with the owning node in its first column.
    template <typename Load> const SqlRows& rows(const std::string& table, int id, Load load) {
        auto it = tables_.find(table);
        if (it == tables_.end()) it = tables_.emplace(table, group(load())).first;
        const auto node = it->second.find(id);
        return node == it->second.end() ? none() : node->second;
    }
    // Makes the next request for `table` load it again.
    void forget(const std::string& table) { tables_.erase(table); }

private:
    static std::map<int, SqlRows> group(SqlRows rows);
    static const SqlRows& none();

    int first_, last_;
    std::map<std::string, std::map<int, SqlRows>> tables_;
};

#endif
