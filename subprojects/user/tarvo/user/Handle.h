#ifndef TARVO_USER_HANDLE_H
#define TARVO_USER_HANDLE_H

#include <memory>
#include <string>

namespace Tarvo::User {

// Names one stored object without loading it: a snapshot of its row, never refreshed.
class Handle {
public:
    // The invalid handle: id 0, uuid "invalid".
    Handle();
    // Reads the row of the object through a connection of its own. An object that cannot be read
    // leaves its message on standard error and an invalid handle; the constructor does not fail.
    explicit Handle(int id);
    explicit Handle(const std::string& uuid);
    Handle(const Handle& o);
    Handle& operator=(const Handle& o);
    ~Handle();

    int id() const;
    const std::string& uuid() const;
    const std::string& type() const;
    const std::string& tag() const;
    const std::string& description() const;
    double created() const;
    double updated() const;
    // The uuid has the form of one: 36 lower-case hexadecimal characters with "-" at 8, 13, 18 and 23.
    bool valid() const;
    // The object is the root of a case, not a part inside one.
    bool isCaseRoot() const;
    // The store answered when the object was looked up: false when it could not be reached at all.
    bool storeReached() const;
    bool operator<(const Handle& o) const { return uuid() < o.uuid(); }

    struct Record {
        int id = 0;
        std::string uuid = "invalid";
        std::string type;
        std::string tag;
        std::string description;
        double created = 0;
        double updated = 0;
        bool caseRoot = false;
        bool storeReached = true;
    };
    explicit Handle(Record record);

private:
    std::unique_ptr<Record> record_;
};

} // namespace Tarvo::User

#endif
