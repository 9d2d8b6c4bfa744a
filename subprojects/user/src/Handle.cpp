#include <tarvo/persistency/PersistencyPostgres.h>
#include <tarvo/user/Handle.h>
#include <tarvo/utility/FunctionName.h>

#include <iostream>

namespace Tarvo::User {

Handle::Handle() : record_(std::make_unique<Record>()) {}

Handle::Handle(Record record) : record_(std::make_unique<Record>(std::move(record))) {}

Handle::Handle(int id) : Handle() {
    record_->id = id;
    bool connected = false;
    try {
        PersistencyPostgres store;
        connected = true;
        int parent = 0, root = 0;
        store.retrieveObject(id, record_->uuid, record_->tag, record_->description, record_->type, parent, root,
                             record_->created, record_->updated);
        record_->caseRoot = parent == id; // a root is stored as its own parent
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        std::cerr << e.message() << std::endl;
        record_->uuid = "invalid";
        record_->storeReached = connected;
    }
}

Handle::Handle(const std::string& uuid) : Handle() {
    bool connected = false;
    try {
        PersistencyPostgres store;
        connected = true;
        int parent = 0, root = 0;
        record_->uuid = uuid;
        store.retrieveObject(uuid, record_->id, record_->tag, record_->description, record_->type, parent, root,
                             record_->created, record_->updated);
        record_->caseRoot = parent == record_->id;
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        std::cerr << e.message() << std::endl;
        record_->uuid = "invalid";
        record_->storeReached = connected;
    }
}

Handle::Handle(const Handle& o) : record_(std::make_unique<Record>(*o.record_)) {}

Handle& Handle::operator=(const Handle& o) {
    *record_ = *o.record_;
    return *this;
}

Handle::~Handle() = default;

int Handle::id() const { return record_->id; }
const std::string& Handle::uuid() const { return record_->uuid; }
const std::string& Handle::type() const { return record_->type; }
const std::string& Handle::tag() const { return record_->tag; }
const std::string& Handle::description() const { return record_->description; }
double Handle::created() const { return record_->created; }
double Handle::updated() const { return record_->updated; }

bool Handle::isCaseRoot() const { return record_->caseRoot; }

bool Handle::storeReached() const { return record_->storeReached; }

bool Handle::valid() const {
    const std::string& u = record_->uuid;
    if (u.size() != 36) return false;
    for (std::size_t i = 0; i < u.size(); ++i) {
        const bool dash = i == 8 || i == 13 || i == 18 || i == 23;
        if (dash ? u[i] != '-' : !((u[i] >= '0' && u[i] <= '9') || (u[i] >= 'a' && u[i] <= 'f'))) return false;
    }
    return true;
}

} // namespace Tarvo::User
