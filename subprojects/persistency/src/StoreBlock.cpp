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

const SqlRows& StoreBlock::none() {
    static const SqlRows empty;
    return empty;
}
