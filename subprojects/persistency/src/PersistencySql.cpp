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

#include <cmath>
#include <cstdarg>
#include <cstdlib>

namespace {

constexpr int verbosityFile = -1;

int integerOf(const std::optional<std::string>& text) { return text ? std::atoi(text->c_str()) : 0; }
double numberOf(const std::optional<std::string>& text) { return text ? std::strtod(text->c_str(), nullptr) : 0.0; }
std::string textOf(const std::optional<std::string>& text) { return text ? *text : std::string(); }

// The unit column of a vector: the units of its first element.
std::string unitOfFirst(const std::vector<Value>& values) {
    return values.empty() ? std::string() : values.front().unitText();
}

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
    if (std::isnan(x)) return 0.0;
    if (std::isinf(x)) return x > 0 ? 8.988465674311579e307 : -8.988465674311579e307;
    if (x != 0 && std::fabs(x) < 1.1125369292536007e-308) return x > 0 ? 4.450147717014403e-308 : -4.450147717014403e-308;
    return x;
}

// Seventeen digits, so that every double comes back from the text exactly.
std::string PersistencySql::numberText(double x) { return sqlFormat("%.17g", safeNumber(x)); }

bool PersistencySql::flagValue(const std::optional<std::string>& text) {
    return text && (*text == "t" || *text == "1" || *text == "true");
}

void PersistencySql::push_transaction() {
    if (depth_ == 0) begin();
    ++depth_;
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
    for (const std::string& statement : dialect_.removeBlock) execute(sqlFormat(statement.c_str(), id, id, id), "removeObject");
    pop_transaction();
}

template <typename Item> int PersistencySql::ownerId(const Item& item, int offset, const char* table) {
    if (!item.parent()) fail(std::string("insert into ") + table, "element has no parent");
    return static_cast<int>(item.parent()->id()) - offset;
}

// ---- scalars ----------------------------------------------------------------------------------------

void PersistencySql::insert(const IntegerMap& items, int offset) {
    if (items.empty()) return;
    push_transaction();
    const auto statement = prepare("PinsertITBL", dialect_.insertI, "insert into I");
    for (const auto& [tag, item] : items)
        statement->run({SqlParameter::of(ownerId(*item, offset, "I")), SqlParameter::of(item->tag()),
                        SqlParameter::of(item->description()), SqlParameter::of(item->value())});
    pop_transaction();
}

void PersistencySql::insert(const QuantityMap& items, int offset) {
    if (items.empty()) return;
    push_transaction();
    const auto statement = prepare("PinsertQTBL", dialect_.insertQ, "insert into Q");
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
    const auto statement = prepare("PinsertSTBL", dialect_.insertS, "insert into S");
    for (const auto& [tag, item] : items)
        statement->run({SqlParameter::of(ownerId(*item, offset, "S")), SqlParameter::of(item->tag()),
                        SqlParameter::of(item->description()), SqlParameter::of(item->value())});
    pop_transaction();
}

// A stored tag that the object does not declare is skipped: a stored tree survives the loss of an
// item from its class, and an item without a row keeps its constructor's value.
void PersistencySql::read(int id, const IntegerMap& items) {
    if (items.empty()) return;
    for (const SqlRow& row : query(sqlFormat(dialect_.readI.c_str(), id), "read I")) {
        const auto it = items.find(textOf(row[0]));
        if (it == items.end()) {
            TARVO_LOG(5) << "skipping " << textOf(row[0]);
            continue;
        }
        it->second->value() = integerOf(row[1]);
        TARVO_LOG(4) << "reading " << it->first << " = " << it->second->value();
    }
}

void PersistencySql::read(int id, const QuantityMap& items) {
    if (items.empty()) return;
    for (const SqlRow& row : query(sqlFormat(dialect_.readQ.c_str(), id), "read Q")) {
        const auto it = items.find(textOf(row[0]));
        if (it == items.end()) {
            TARVO_LOG(5) << "skipping " << textOf(row[0]);
            continue;
        }
        Quantity& q = *it->second;
        q = Value(numberOf(row[1]), textOf(row[2]));
        // A flag stored false does not lower one that the constructor has raised.
        if (flagValue(row[3])) q.setInput();
        if (flagValue(row[4])) q.setOutput();
        TARVO_LOG(4) << "reading " << it->first << " = " << q.toDouble();
    }
}

void PersistencySql::read(int id, const StringMap& items) {
    if (items.empty()) return;
    for (const SqlRow& row : query(sqlFormat(dialect_.readS.c_str(), id), "read S")) {
        const auto it = items.find(textOf(row[0]));
        if (it == items.end()) {
            TARVO_LOG(5) << "skipping " << textOf(row[0]);
            continue;
        }
        it->second->value() = textOf(row[1]);
        TARVO_LOG(4) << "reading " << it->first << " = " << it->second->value();
    }
}

template <typename Map, typename Parameter>
void PersistencySql::updateScalars(int id, const Map& items, const char* table, Parameter parameter) {
    if (items.empty()) return;
    push_transaction();
    const auto statement =
        prepare("PupdateVTBL", sqlFormat(dialect_.updateScalar.c_str(), table, id), std::string("update ") + table);
    for (const auto& [tag, item] : items)
        statement->run({parameter(*item), SqlParameter::of(item->tag())},
                       sqlFormat("Record %s not found!", item->tag().c_str()));
    pop_transaction();
}

void PersistencySql::update(int id, const IntegerMap& items) {
    updateScalars(id, items, "I", [](const Integer& i) { return SqlParameter::of(i.value()); });
}

void PersistencySql::update(int id, const QuantityMap& items) {
    updateScalars(id, items, "Q", [](const Quantity& q) { return SqlParameter::of(safeNumber(q.toDouble())); });
}

void PersistencySql::update(int id, const StringMap& items) {
    updateScalars(id, items, "S", [](const String& s) { return SqlParameter::of(s.value()); });
}

// ---- vectors ----------------------------------------------------------------------------------------

template <typename Map, typename Parameter>
void PersistencySql::insertVectors(const Map& items, int offset, const char* table, const char* link,
                                   Parameter parameter) {
    if (items.empty()) return;
    push_transaction();
    constexpr bool quantities = std::is_same_v<Map, QuantityVectorMap> || std::is_same_v<Map, QuantityMatrixMap>;
    const std::string context = std::string("insert into ") + table;
    const auto vectors =
        quantities ? prepare("PinsertQVTBL", sqlFormat(dialect_.insertQuantityVector.c_str(), table), context)
                   : prepare("PinsertVTBL", sqlFormat(dialect_.insertVector.c_str(), table), context);
    const auto values = prepare(quantities ? "PinsertQVVTBL" : "PinsertVVTBL",
                                sqlFormat(dialect_.insertVectorValue.c_str(), table, link), context + "V");
    for (const auto& [tag, item] : items) {
        std::vector<SqlParameter> row{SqlParameter::of(ownerId(*item, offset, table)), SqlParameter::of(item->tag()),
                                      SqlParameter::of(item->description())};
        if constexpr (quantities) {
            const bool input = item->size() && item->value().front().input();
            const bool output = item->size() && item->value().front().output();
            row.insert(row.end(), {SqlParameter::of(unitOfFirst(item->value())), SqlParameter::flag(input),
                                   SqlParameter::flag(output)});
        }
        vectors->run(row);
        const int vid = lastVectorId(table);
        for (const auto& element : item->value()) values->run({SqlParameter::of(vid), parameter(element)});
    }
    pop_transaction();
}

template <typename Map, typename Assign>
void PersistencySql::readVectors(int id, const Map& items, const char* table, const char* link, Assign assign) {
    if (items.empty()) return;
    for (const SqlRow& row : query(sqlFormat(dialect_.selectVectors.c_str(), table, id), std::string("read ") + table)) {
        const auto it = items.find(textOf(row[1]));
        if (it == items.end()) {
            TARVO_LOG(5) << "skipping " << textOf(row[1]);
            continue;
        }
        const SqlRows values = query(sqlFormat(dialect_.selectVectorValues.c_str(), table, link, integerOf(row[0])),
                                     std::string("read ") + table + "V");
        auto& item = *it->second;
        item.resize(values.size());
        for (std::size_t i = 0; i < values.size(); ++i) assign(item.value()[i], values[i][0]);
        TARVO_LOG(4) << "reading " << it->first << " with " << values.size() << " values";
    }
}

// A vector of unchanged size is rewritten in place, element i into the value row MIN(ID) + i (the rows of
// one vector are written by one loop in one transaction); a vector that changed size is written anew.
template <typename Map, typename Parameter>
void PersistencySql::updateVectors(int id, const Map& items, const char* table, const char* link,
                                   Parameter parameter) {
    if (items.empty()) return;
    push_transaction();
    const std::string context = std::string("update ") + table;
    std::unique_ptr<SqlStatement> inPlace, values;
    for (const SqlRow& row : query(sqlFormat(dialect_.selectVectors.c_str(), table, id), context)) {
        const auto it = items.find(textOf(row[1]));
        if (it == items.end()) {
            TARVO_LOG(5) << "skipping " << textOf(row[1]);
            continue;
        }
        const auto& item = *it->second;
        const int vid = integerOf(row[0]);
        TARVO_LOG(4) << "updating " << it->first;
        const SqlRows count = query(sqlFormat(dialect_.countVectorValues.c_str(), table, link, vid), context);
        const int n = integerOf(count.front()[0]), first = integerOf(count.front()[1]);
        TARVO_LOG(4) << "count_id = " << n << " vector size = " << item.size();
        if (n == static_cast<int>(item.size())) {
            if (!inPlace)
                inPlace = prepare("PupdateVVTBL", sqlFormat(dialect_.updateVectorValue.c_str(), table), context + "V");
            for (int i = 0; i < n; ++i) inPlace->run({parameter(item.value()[i]), SqlParameter::of(first + i)});
        } else {
            lockAllocation();
            execute(sqlFormat(dialect_.deleteVectorValues.c_str(), table, link, vid), context + "V");
            if (!values)
                values = prepare("PinsertVVTBL", sqlFormat(dialect_.insertVectorValue.c_str(), table, link), context + "V");
            for (const auto& element : item.value()) values->run({SqlParameter::of(vid), parameter(element)});
        }
    }
    inPlace.reset();
    values.reset();
    pop_transaction();
}

namespace {
SqlParameter integerParameter(int v) { return SqlParameter::of(v); }
SqlParameter textParameter(const std::string& v) { return SqlParameter::of(v); }
SqlParameter valueParameter(const Value& v) { return SqlParameter::of(PersistencySql::safeNumber(v.toDouble())); }
void assignInteger(int& to, const std::optional<std::string>& text) { to = integerOf(text); }
// Fixed-width text columns come back padded with blanks.
void assignText(std::string& to, const std::optional<std::string>& text) {
    to = textOf(text);
    to.erase(to.find_last_not_of(' ') + 1);
}
// Elements take the number in the units that the item already has.
void assignValue(Value& to, const std::optional<std::string>& text) { to.active() = numberOf(text); }
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
