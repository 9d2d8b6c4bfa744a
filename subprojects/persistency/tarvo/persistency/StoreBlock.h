#ifndef TARVO_PERSISTENCY_STOREBLOCK_H
#define TARVO_PERSISTENCY_STOREBLOCK_H

#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
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

    // The rows of `table` that belong to node id. The first time a table is asked for, load(first, last)
    // gives all its rows of the nodes [first, last) of the block, each with the owning node in its first
    // column; a node forgotten since is loaded again alone, as load(id, id + 1).
    template <typename Load> const SqlRows& rows(const std::string& table, int id, Load load) {
        auto it = tables_.find(table);
        if (it == tables_.end()) it = tables_.emplace(table, group(load(first_, last_))).first;
        std::map<int, SqlRows>& nodes = it->second;
        if (stale_.erase({table, id})) {
            std::map<int, SqlRows> fresh = group(load(id, id + 1));
            nodes.erase(id);
            if (!fresh.empty()) nodes[id] = std::move(fresh.begin()->second);
        }
        const auto node = nodes.find(id);
        return node == nodes.end() ? none() : node->second;
    }
    // The rows of `table` for the whole block, loaded by the caller.
    void put(const std::string& table, SqlRows rows) { tables_[table] = group(std::move(rows)); }
    // Makes the next request for the rows of node id in `table` load them again: those of a vector written
    // anew, whose value rows have new IDs. The other nodes' rows stay.
    void forget(const std::string& table, int id) { stale_.emplace(table, id); }

    // The rows of `table` by node, or null where the table has not been loaded.
    const std::map<int, SqlRows>* loaded(const std::string& table) const;
    // Takes the rows of `table` from `other` where it has loaded them and forgotten none: the caller has made
    // sure that they are the store's rows of this block. Tells whether it did.
    bool take(StoreBlock& other, const std::string& table);
    // Gives up the rows of `table` where it has loaded them and forgotten none.
    std::optional<std::map<int, SqlRows>> release(const std::string& table);

private:
    static std::map<int, SqlRows> group(SqlRows rows);
    static const SqlRows& none();

    int first_, last_;
    std::map<std::string, std::map<int, SqlRows>> tables_;
    std::set<std::pair<std::string, int>> stale_;
};

#endif
