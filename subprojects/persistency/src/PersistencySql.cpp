#include <tarvo/persistency/Integer.h>
#include <tarvo/persistency/IntegerVector.h>
#include <tarvo/persistency/Persistent.h>
#include <tarvo/persistency/PersistencySql.h>
#include <tarvo/persistency/Quantity.h>
#include <tarvo/persistency/QuantityMatrix.h>
#include <tarvo/persistency/QuantityVector.h>
#include <tarvo/persistency/String.h>
#include <tarvo/persistency/StringVector.h>
#include <tarvo/utility/Log.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdarg>
#include <cstdlib>

namespace {

constexpr int verbosityFile = -1;

int integerOf(const std::optional<std::string>& text) { return text ? std::atoi(text->c_str()) : 0; }
double numberOf(const std::optional<std::string>& text) { return text ? std::strtod(text->c_str(), nullptr) : 0.0; }
std::string textOf(const std::optional<std::string>& text) { return text ? *text : std::string(); }

// Whether a row that holds `stored` would keep its value when `value` is written to it: the server compares numbers
// as equal where NaN meets NaN and 0 meets -0, and fixed-width text, which `stored` is, without its padding.
bool holds(const std::optional<std::string>& stored, const SqlParameter& value) {
    if (!stored) return false;
    switch (value.kind) {
    case SqlParameter::integer:
        return std::atoll(stored->c_str()) == value.i;
    case SqlParameter::real: {
        const double d = std::strtod(stored->c_str(), nullptr);
        return d == value.d || (std::isnan(d) && std::isnan(value.d));
    }
    case SqlParameter::text:
        return *stored == value.s;
    case SqlParameter::boolean:
        break;
    }
    return false;
}

// What a row holds once `value` is written to it, as a read gives it back: text without the blanks that pad it.
std::string heldText(const SqlParameter& value) {
    if (value.kind != SqlParameter::text) return PersistencySql::parameterText(value);
    return value.s.substr(0, value.s.find_last_not_of(' ') + 1);
}

// The unit column of a vector: the units of its first element.
std::string unitOfFirst(const std::vector<Value>& values) {
    return values.empty() ? std::string() : values.front().unitText();
}

// The tables of vectors: each with the column that links its values to it, and whether it carries the flags.
struct VectorTable {
    const char* table;
    const char* link;
    bool flags;
};
constexpr VectorTable vectorTables[] = {
    {"IV", "VID", false}, {"QV", "VID", true}, {"QM", "MID", true}, {"SV", "VID", false}};

} // namespace

std::string sqlFormat(const char* format, ...) {
    char buffer[1024];
    va_list args;
    va_start(args, format);
    const int n = std::vsnprintf(buffer, sizeof buffer, format, args);
    va_end(args);
    if (n < static_cast<int>(sizeof buffer)) return std::string(buffer, n > 0 ? n : 0);
    std::string text(n + 1, '\0');
    va_start(args, format);
    std::vsnprintf(text.data(), text.size(), format, args);
    va_end(args);
    text.resize(n);
    return text;
}

double PersistencySql::safeNumber(double x) {
    if (x != 0 && std::fabs(x) < 1.1125369292536007e-308) return x > 0 ? 4.450147717014403e-308 : -4.450147717014403e-308;
    return x;
}

// The shortest text that reads back as the same double, so that every number comes back from the store exactly;
// a tenth of the work of a formatted print, which an update of a large plant makes for each of its values.
std::string PersistencySql::numberText(double x) {
    if (std::isnan(x)) return "NaN";
    if (std::isinf(x)) return x > 0 ? "Infinity" : "-Infinity";
    char text[32];
    return std::string(text, std::to_chars(text, text + sizeof text, safeNumber(x)).ptr);
}

std::string PersistencySql::parameterText(const SqlParameter& p) {
    switch (p.kind) {
    case SqlParameter::integer:
        return std::to_string(p.i);
    case SqlParameter::real:
        return numberText(p.d);
    case SqlParameter::boolean:
        return p.i ? "t" : "f";
    case SqlParameter::text:
        break;
    }
    return p.s;
}

namespace {
// Booleans as either database gives them back.
bool flagValue(const std::optional<std::string>& text) {
    return text && (*text == "t" || *text == "1" || *text == "true");
}
} // namespace

namespace {
// What the last driver of a process to end read of a store outside any transaction: a kernel's command reads a
// case with one driver and writes its results with the next.
struct HandedBlock {
    std::string store;
    std::unique_ptr<StoreBlock> block;
};
HandedBlock handed;

// The column of a row of N that holds the row's version, where the store keeps one; in the rows that lock a block,
// the third.
constexpr std::size_t versionColumn = 10, lockedVersionColumn = 2;

// Whether the versions of the rows of N locked now vouch for the rows of `earlier`: the same nodes, each row of
// the same version, which every write of a row changes.
bool unchangedSince(const StoreBlock& earlier, const StoreBlock& now) {
    const std::map<int, SqlRows>*then = earlier.loaded("N"), *locked = now.loaded("versions");
    if (!then || !locked || earlier.first() != now.first() || earlier.last() != now.last() ||
        then->size() != locked->size())
        return false;
    for (auto a = then->begin(), b = locked->begin(); a != then->end(); ++a, ++b) {
        if (a->first != b->first || a->second.size() != 1 || b->second.size() != 1) return false;
        const SqlRow &read = a->second.front(), &now = b->second.front();
        if (read.size() <= versionColumn || !read[versionColumn] || read[versionColumn] != now[lockedVersionColumn])
            return false;
    }
    return true;
}
} // namespace

PersistencySql::~PersistencySql() {
    if (!store_.empty() && readBlock_ && readBlockCommitted_ && depth_ == 0)
        handed = {store_, std::move(readBlock_)};
}

// Every write comes in a transaction, so what was read of the store is dropped here.
void PersistencySql::push_transaction() {
    readBlock_.reset();
    if (depth_ == 0) {
        updateBlock_.reset();
        storedScalars_.clear();
        begin();
    }
    ++depth_;
}

void PersistencySql::forgetBlocks() {
    readBlock_.reset();
    updateBlock_.reset();
    storedScalars_.clear();
}

void PersistencySql::pop_transaction() {
    if (depth_ == 0) return;
    if (depth_ == 1) commit();
    --depth_;
}

int PersistencySql::getId() {
    lockAllocation();
    const SqlRows rows = query(dialect_.getId, "getId");
    return rows.empty() ? 0 : integerOf(rows.front().front());
}

void PersistencySql::removeObject(int id) {
    push_transaction();
    updateBlock_.reset();
    storedScalars_.clear();
    for (const std::string& statement : dialect_.removeBlock) execute(sqlFormat(statement.c_str(), id, id, id), "removeObject");
    pop_transaction();
}

// ---- blocks -----------------------------------------------------------------------------------------

std::unique_ptr<StoreBlock> PersistencySql::loadBlock(int id) {
    SqlRows nodes = query(sqlFormat(dialect_.selectBlock.c_str(), id, id, id), "read N");
    int range = 1; // an id not in the store makes a block of itself, with no rows
    SqlRows children;
    for (const SqlRow& row : nodes) {
        if (integerOf(row[0]) == id) range = std::max(1, integerOf(row[9]));
        children.push_back({row[5], row[0], row[4]}); // PARENT, ID, TYPE
    }
    auto block = std::make_unique<StoreBlock>(id, id + range);
    block->rows("N", id, [&](int, int) { return std::move(nodes); });
    block->rows("children", id, [&](int, int) { return std::move(children); });
    return block;
}

std::vector<SqlRows> PersistencySql::queries(const std::vector<std::string>& sql, const std::string& context) {
    std::vector<SqlRows> rows;
    for (const std::string& statement : sql) rows.push_back(query(statement, context));
    return rows;
}

StoreBlock& PersistencySql::readBlock(int id) {
    if (!readBlock_ || !readBlock_->covers(id)) {
        readBlock_ = loadBlock(id);
        readBlockCommitted_ = depth_ == 0;
    }
    return *readBlock_;
}

// A tree is read whole: at the first request for items, the rows of every table of the block are asked for at
// once.
StoreBlock& PersistencySql::readTables(int id) {
    StoreBlock& block = readBlock(id);
    if (!block.loaded("I")) {
        const int first = block.first(), last = block.last();
        std::vector<const char*> tables{"I", "Q", "S"};
        std::vector<std::string> sql{sqlFormat(dialect_.readI.c_str(), first, last),
                                     sqlFormat(dialect_.readQ.c_str(), first, last),
                                     sqlFormat(dialect_.readS.c_str(), first, last)};
        for (const auto& [table, link, flags] : vectorTables) {
            tables.push_back(table);
            sql.push_back(vectorsSql(table, link, flags, first, last));
        }
        std::vector<SqlRows> rows = queries(sql, "read the block of " + std::to_string(id));
        for (std::size_t t = 0; t < tables.size(); ++t) block.put(tables[t], std::move(rows[t]));
    }
    return block;
}

StoreBlock& PersistencySql::updateBlock(int id) {
    if (updateBlock_ && updateBlock_->covers(id)) return *updateBlock_;
    if (dialect_.lockBlock.empty()) {
        updateBlock_ = loadBlock(id);
    } else {
        SqlRows versions = query(sqlFormat(dialect_.lockBlock.c_str(), id, id, id), "lock N");
        int range = 1;
        for (const SqlRow& row : versions)
            if (integerOf(row[0]) == id) range = std::max(1, integerOf(row[1]));
        updateBlock_ = std::make_unique<StoreBlock>(id, id + range);
        updateBlock_->put("versions", std::move(versions));
    }
    std::unique_ptr<StoreBlock> earlier;
    if (handed.block && handed.store == store_) earlier = std::move(handed.block);
    const bool current = earlier && unchangedSince(*earlier, *updateBlock_);
    vouched_ = current;
    // All tables of vectors at once, before the updates of the nodes after this one have gathered rows that a
    // read would send first.
    for (const auto& [table, link, flags] : vectorTables)
        if (!current || !updateBlock_->take(*earlier, table)) vectorRows(*updateBlock_, id, table, link, flags);
    if (current)
        for (const char* table : {"I", "Q", "S"})
            if (std::optional<std::map<int, SqlRows>> taken = earlier->release(table))
                storedScalars_[table] = std::move(*taken);
    return *updateBlock_;
}

const SqlRows& PersistencySql::scalarRows(int id, const char* table, const std::string& sql) {
    StoreBlock& block = readTables(id);
    return block.rows(table, id, [&](int first, int last) {
        return query(sqlFormat(sql.c_str(), first, last), std::string("read ") + table);
    });
}

const SqlRows& PersistencySql::vectorRows(StoreBlock& block, int id, const char* table, const char* link,
                                          bool flags) {
    return block.rows(table, id, [&](int first, int last) {
        return query(vectorsSql(table, link, flags, first, last), std::string("read ") + table);
    });
}

std::string PersistencySql::vectorsSql(const char* table, const char* link, bool flags, int first, int last) const {
    return sqlFormat(dialect_.selectVectors.c_str(), flags ? ", V.INPUT, V.OUTPUT" : "", table, table, link, first,
                     last);
}

void PersistencySql::retrieveObject(int id, std::string& uuid, std::string& tag, std::string& description,
                                    std::string& type, int& parent, int& root, double& created, double& updated) {
    const SqlRows& rows = readBlock(id).rows("N", id, [](int, int) { return SqlRows(); });
    if (rows.empty()) fail(__PRETTY_FUNCTION__, "can't find in N");
    uuid = textOf(rows.front()[1]);
    nodeFields(rows.front(), 2, tag, description, type, parent, root, created, updated);
}

void PersistencySql::nodeFields(const SqlRow& row, std::size_t tagColumn, std::string& tag, std::string& description,
                                std::string& type, int& parent, int& root, double& created, double& updated) {
    tag = textOf(row[tagColumn]);
    description = textOf(row[tagColumn + 1]);
    type = textOf(row[tagColumn + 2]);
    parent = integerOf(row[tagColumn + 3]);
    root = integerOf(row[tagColumn + 4]);
    created = numberOf(row[tagColumn + 5]);
    updated = numberOf(row[tagColumn + 6]);
}

void PersistencySql::retrieveChildren(int id, std::vector<std::pair<int, std::string>>& children) {
    children.clear();
    for (const SqlRow& row : readBlock(id).rows("children", id, [](int, int) { return SqlRows(); }))
        if (integerOf(row[1]) != id) children.emplace_back(integerOf(row[1]), textOf(row[2])); // a root is its own parent
}

template <typename Item> int PersistencySql::ownerId(const Item& item, int offset, const char* table) {
    if (!item.parent()) fail(std::string("insert into ") + table, "element has no parent");
    return static_cast<int>(item.parent()->id()) - offset;
}

// ---- scalars ----------------------------------------------------------------------------------------

void PersistencySql::insert(const IntegerMap& items, int offset) {
    if (items.empty()) return;
    push_transaction();
    const auto statement = prepare(dialect_.insertI, "insert into I");
    for (const auto& [tag, item] : items)
        statement->run({SqlParameter::of(ownerId(*item, offset, "I")), SqlParameter::of(item->tag()),
                        SqlParameter::of(item->description()), SqlParameter::of(item->value())});
    pop_transaction();
}

void PersistencySql::insert(const QuantityMap& items, int offset) {
    if (items.empty()) return;
    push_transaction();
    const auto statement = prepare(dialect_.insertQ, "insert into Q");
    for (const auto& [tag, item] : items)
        statement->run({SqlParameter::of(ownerId(*item, offset, "Q")), SqlParameter::of(item->tag()),
                        SqlParameter::of(item->description()), SqlParameter::of(safeNumber(item->toDouble())),
                        SqlParameter::of(item->unitText()), SqlParameter::flag(item->input()),
                        SqlParameter::flag(item->output())});
    pop_transaction();
}

void PersistencySql::insert(const StringMap& items, int offset) {
    if (items.empty()) return;
    push_transaction();
    const auto statement = prepare(dialect_.insertS, "insert into S");
    for (const auto& [tag, item] : items)
        statement->run({SqlParameter::of(ownerId(*item, offset, "S")), SqlParameter::of(item->tag()),
                        SqlParameter::of(item->description()), SqlParameter::of(item->value())});
    pop_transaction();
}

// A stored tag that the object does not declare is skipped: a stored tree survives the loss of an
// item from its class, and an item without a row keeps its constructor's value.
void PersistencySql::read(int id, const IntegerMap& items) {
    if (items.empty()) return;
    for (const SqlRow& row : scalarRows(id, "I", dialect_.readI)) {
        const auto it = items.find(textOf(row[1]));
        if (it == items.end()) {
            TARVO_LOG(5) << "skipping " << textOf(row[1]);
            continue;
        }
        it->second->value() = integerOf(row[2]);
        TARVO_LOG(4) << "reading " << it->first << " = " << it->second->value();
    }
}

void PersistencySql::read(int id, const QuantityMap& items) {
    if (items.empty()) return;
    for (const SqlRow& row : scalarRows(id, "Q", dialect_.readQ)) {
        const auto it = items.find(textOf(row[1]));
        if (it == items.end()) {
            TARVO_LOG(5) << "skipping " << textOf(row[1]);
            continue;
        }
        Quantity& q = *it->second;
        q = Value(numberOf(row[2]), textOf(row[3]));
        // A flag stored false does not lower one that the constructor has raised.
        if (flagValue(row[4])) q.setInput();
        if (flagValue(row[5])) q.setOutput();
        TARVO_LOG(4) << "reading " << it->first << " = " << q.toDouble();
    }
}

void PersistencySql::read(int id, const StringMap& items) {
    if (items.empty()) return;
    for (const SqlRow& row : scalarRows(id, "S", dialect_.readS)) {
        const auto it = items.find(textOf(row[1]));
        if (it == items.end()) {
            TARVO_LOG(5) << "skipping " << textOf(row[1]);
            continue;
        }
        it->second->value() = textOf(row[2]);
        TARVO_LOG(4) << "reading " << it->first << " = " << it->second->value();
    }
}

// Items whose rows the transaction knows are updated by row ID, which spares the server a search by node and tag,
// and only where the value differs from the row's: the rows are as the store holds them, as no other writer can
// change them before the transaction ends. The other items are updated by node and tag, and every value is sent,
// for the server to compare with the row as it is then. An item goes the same way at every update of a
// transaction, so that its runs go out in the order in which they were made.
template <typename Map, typename Parameter>
void PersistencySql::updateScalars(int id, const Map& items, const char* table, std::size_t stored,
                                   Parameter parameter) {
    if (items.empty()) return;
    push_transaction();
    const std::string context = std::string("update ") + table;
    std::unique_ptr<SqlStatement> byId, byTag;
    SqlRows* rows = nullptr;
    if (const auto known = storedScalars_.find(table); known != storedScalars_.end())
        if (const auto node = known->second.find(id); node != known->second.end()) rows = &node->second;
    for (const auto& [tag, item] : items) {
        const SqlParameter value = parameter(*item);
        const auto row = rows ? std::find_if(rows->begin(), rows->end(), [&](const SqlRow& r) { return r[1] == tag; })
                              : SqlRows::iterator();
        if (!rows || row == rows->end()) {
            if (!byTag) byTag = prepare(sqlFormat(dialect_.updateScalar.c_str(), table), context);
            byTag->run({value, SqlParameter::of(item->tag()), SqlParameter::of(id)}, item->tag());
        } else if (!holds((*row)[stored], value)) {
            if (!byId) byId = prepare(sqlFormat(dialect_.updateLockedById.c_str(), table), context);
            byId->run({value, SqlParameter::of(integerOf(row->back()))});
            (*row)[stored] = heldText(value);
        }
    }
    pop_transaction();
}

void PersistencySql::update(int id, const IntegerMap& items) {
    updateScalars(id, items, "I", 2, [](const Integer& i) { return SqlParameter::of(i.value()); });
}

void PersistencySql::update(int id, const QuantityMap& items) {
    updateScalars(id, items, "Q", 2, [](const Quantity& q) { return SqlParameter::of(safeNumber(q.toDouble())); });
}

void PersistencySql::update(int id, const StringMap& items) {
    updateScalars(id, items, "S", 3, [](const String& s) { return SqlParameter::of(s.value()); });
}

// ---- vectors ----------------------------------------------------------------------------------------

namespace {
// Vectors and matrices of quantities carry a unit and the two flags for all their elements.
template <typename Map>
constexpr bool holdsQuantities = std::is_same_v<Map, QuantityVectorMap> || std::is_same_v<Map, QuantityMatrixMap>;
} // namespace

template <typename Map, typename Parameter>
void PersistencySql::insertVectors(const Map& items, int offset, const char* table, const char* link,
                                   Parameter parameter) {
    if (items.empty()) return;
    push_transaction();
    updateBlock_.reset(); // the vectors it lists are no longer all
    const std::string context = std::string("insert into ") + table;
    const auto vectors = prepare(
        sqlFormat((holdsQuantities<Map> ? dialect_.insertQuantityVector : dialect_.insertVector).c_str(), table), context);
    const auto values = prepare(sqlFormat(dialect_.insertVectorValue.c_str(), table, link), context + "V");
    for (const auto& [tag, item] : items) {
        std::vector<SqlParameter> row{SqlParameter::of(ownerId(*item, offset, table)), SqlParameter::of(item->tag()),
                                      SqlParameter::of(item->description())};
        if constexpr (holdsQuantities<Map>) {
            const bool input = item->size() && item->value().front().input();
            const bool output = item->size() && item->value().front().output();
            row.insert(row.end(), {SqlParameter::of(unitOfFirst(item->value())), SqlParameter::flag(input),
                                   SqlParameter::flag(output)});
        }
        std::vector<SqlParameter> elements;
        elements.reserve(item->size());
        for (const auto& element : item->value()) elements.push_back(parameter(element));
        vectors->runVector(row, *values, elements);
    }
    pop_transaction();
}

namespace {

// Calls visit(tag, first, last) for each vector among the rows of one node, [first, last) being its
// rows: one per value, or one with a null value ID for a vector without values.
template <typename Visit> void forEachVector(const SqlRows& rows, Visit visit) {
    for (auto first = rows.begin(); first != rows.end();) {
        auto last = first;
        while (last != rows.end() && (*last)[1] == (*first)[1]) ++last;
        visit(textOf((*first)[2]), first, last);
        first = last;
    }
}

std::size_t valueCount(SqlRows::const_iterator first, SqlRows::const_iterator last) {
    return (*first)[3] ? static_cast<std::size_t>(last - first) : 0;
}

} // namespace

template <typename Map, typename Assign>
void PersistencySql::readVectors(int id, const Map& items, const char* table, const char* link, Assign assign) {
    if (items.empty()) return;
    const SqlRows& rows = vectorRows(readTables(id), id, table, link, holdsQuantities<Map>);
    forEachVector(rows, [&](const std::string& tag, auto first, auto last) {
        const auto it = items.find(tag);
        if (it == items.end()) {
            TARVO_LOG(5) << "skipping " << tag;
            return;
        }
        auto& item = *it->second;
        const std::size_t n = valueCount(first, last);
        item.resize(n);
        for (std::size_t i = 0; i < n; ++i) assign(item.value()[i], first[i]);
        TARVO_LOG(4) << "reading " << it->first << " with " << n << " values";
    });
}

// A vector of unchanged size is rewritten in place, element i into the value row of the i-th smallest
// ID; a vector that changed size is written anew, after which the block reads that node's rows of the table again.
template <typename Map, typename Parameter>
void PersistencySql::updateVectors(int id, const Map& items, const char* table, const char* link,
                                   Parameter parameter) {
    if (items.empty()) return;
    push_transaction();
    const std::string context = std::string("update ") + table;
    std::unique_ptr<SqlStatement> inPlace, lock, remove, replace;
    bool rewritten = false;
    StoreBlock& block = updateBlock(id);
    forEachVector(vectorRows(block, id, table, link, holdsQuantities<Map>), [&](const std::string& tag, auto first, auto last) {
        const auto it = items.find(tag);
        if (it == items.end()) {
            TARVO_LOG(5) << "skipping " << tag;
            return;
        }
        const auto& item = *it->second;
        const int vid = integerOf((*first)[1]);
        const std::size_t n = valueCount(first, last);
        TARVO_LOG(4) << "updating " << it->first;
        TARVO_LOG(4) << "count_id = " << n << " vector size = " << item.size();
        if (!inPlace) {
            const std::string& statement = vouched_ ? dialect_.updateLockedById : dialect_.updateById;
            inPlace = prepare(sqlFormat(statement.c_str(), (std::string(table) + "V").c_str()), context + "V");
        }
        if (n == item.size()) {
            // A row gone since the block was read (another kernel rewrote the vector) fails the transaction; in a
            // vouched block, whose nodes the transaction holds locked, none can have gone.
            for (std::size_t i = 0; i < n; ++i)
                inPlace->run({parameter(item.value()[i]), SqlParameter::of(integerOf(first[i][3]))},
                             vouched_ ? std::string() : tag);
        } else {
            // Its values come from a sequence, so only another writer of this vector must wait: one that
            // deleted the old values before this one inserts would otherwise leave both sets behind.
            // Gathered runs go out in the order in which their statements were first prepared: the update in
            // place above before the rewrite, as a vector updated in place may be rewritten next, while one
            // that was rewritten is updated again only after its block is read anew.
            if (!remove) {
                if (!dialect_.lockVector.empty())
                    lock = prepare(sqlFormat(dialect_.lockVector.c_str(), table), context);
                remove = prepare(sqlFormat(dialect_.deleteVectorValues.c_str(), table, link), context + "V");
                const std::string& write =
                    dialect_.replaceVectorValues.empty() ? dialect_.insertVectorValue : dialect_.replaceVectorValues;
                replace = prepare(sqlFormat(write.c_str(), table, link), context + "V");
            }
            if (lock) lock->run({SqlParameter::of(vid)});
            if (dialect_.replaceVectorValues.empty() || item.size() == 0) remove->run({SqlParameter::of(vid)});
            for (const auto& element : item.value()) replace->run({SqlParameter::of(vid), parameter(element)});
            rewritten = true;
        }
    });
    if (rewritten) block.forget(table, id);
    inPlace.reset();
    lock.reset();
    remove.reset();
    replace.reset();
    pop_transaction();
}

namespace {
SqlParameter integerParameter(int v) { return SqlParameter::of(v); }
SqlParameter textParameter(const std::string& v) { return SqlParameter::of(v); }
SqlParameter valueParameter(const Value& v) { return SqlParameter::of(PersistencySql::safeNumber(v.toDouble())); }
// Each reads the element's value from column 4 of its row.
void assignInteger(int& to, const SqlRow& row) { to = integerOf(row[4]); }
// Without trailing blanks, as the server's fixed-width columns keep none: the same from either store.
void assignText(std::string& to, const SqlRow& row) {
    to = textOf(row[4]);
    to.erase(to.find_last_not_of(' ') + 1);
}
// Elements take the number in the units that the item already has, and the vector's flags as a scalar
// quantity takes its own: one stored false does not lower one that the constructor has raised.
void assignValue(Value& to, const SqlRow& row) {
    to.active() = numberOf(row[4]);
    if (flagValue(row[5])) to.setInput();
    if (flagValue(row[6])) to.setOutput();
}
} // namespace

void PersistencySql::insert(const IntegerVectorMap& items, int offset) {
    insertVectors(items, offset, "IV", "VID", integerParameter);
}
void PersistencySql::read(int id, const IntegerVectorMap& items) { readVectors(id, items, "IV", "VID", assignInteger); }
void PersistencySql::update(int id, const IntegerVectorMap& items) {
    updateVectors(id, items, "IV", "VID", integerParameter);
}
void PersistencySql::insert(const QuantityVectorMap& items, int offset) {
    insertVectors(items, offset, "QV", "VID", valueParameter);
}
void PersistencySql::read(int id, const QuantityVectorMap& items) { readVectors(id, items, "QV", "VID", assignValue); }
void PersistencySql::update(int id, const QuantityVectorMap& items) {
    updateVectors(id, items, "QV", "VID", valueParameter);
}
void PersistencySql::insert(const QuantityMatrixMap& items, int offset) {
    insertVectors(items, offset, "QM", "MID", valueParameter);
}
void PersistencySql::read(int id, const QuantityMatrixMap& items) { readVectors(id, items, "QM", "MID", assignValue); }
void PersistencySql::update(int id, const QuantityMatrixMap& items) {
    updateVectors(id, items, "QM", "MID", valueParameter);
}
void PersistencySql::insert(const StringVectorMap& items, int offset) {
    insertVectors(items, offset, "SV", "VID", textParameter);
}
void PersistencySql::read(int id, const StringVectorMap& items) { readVectors(id, items, "SV", "VID", assignText); }
void PersistencySql::update(int id, const StringVectorMap& items) {
    updateVectors(id, items, "SV", "VID", textParameter);
}
