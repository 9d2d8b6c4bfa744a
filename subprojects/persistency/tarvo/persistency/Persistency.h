#ifndef TARVO_PERSISTENCY_PERSISTENCY_H
#define TARVO_PERSISTENCY_PERSISTENCY_H

#include <tarvo/utility/Diagnostic.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

class Integer;
class Quantity;
class String;
class IntegerVector;
class QuantityVector;
class QuantityMatrix;
class StringVector;
class Node;

using IntegerMap = std::map<std::string, Integer*>;
using QuantityMap = std::map<std::string, Quantity*>;
using StringMap = std::map<std::string, String*>;
using IntegerVectorMap = std::map<std::string, IntegerVector*>;
using QuantityVectorMap = std::map<std::string, QuantityVector*>;
using QuantityMatrixMap = std::map<std::string, QuantityMatrix*>;
using StringVectorMap = std::map<std::string, StringVector*>;

// The store through which the object tree writes and reads itself: a row of table N for every node and
// a row of a value table for every item. Every operation reports failure by throwing its driver's error.
// Transactions nest by depth: the outermost push begins one, the matching pop commits it.
class Persistency : public virtual Diagnostic {
public:
    virtual ~Persistency() = default;

    virtual void push_transaction() = 0;
    virtual void pop_transaction() = 0;
    // Deletes rows: all with id all ones; for table "N" those with ID = id, else those with NID = id.
    virtual void purge(const std::string& table, int id) = 0;
    // Rows of the whole table for a negative id, else those with ID = id.
    virtual int countRows(const std::string& table, int id) = 0;
    // The first free identifier: the largest ID + RANGE of table N, or 0.
    virtual int getId() = 0;
    virtual void remove(int id, const std::string& table) = 0;
    // Rows with NID = id, or of the whole table for a negative id.
    virtual int countCID(int id, const std::string& table) = 0;
    // Writes the row of N of a node and stamps its update time; returns its identifier in the store.
    virtual int insertObject(Node& node, int offset) = 0;
    virtual void retrieveObject(int id, std::string& uuid, std::string& tag, std::string& description,
                                std::string& type, int& parent, int& root, double& created, double& updated) = 0;
    virtual void retrieveObject(const std::string& uuid, int& id, std::string& tag, std::string& description,
                                std::string& type, int& parent, int& root, double& created, double& updated) = 0;
    // Identifier and type of the direct children, ascending by identifier.
    virtual void retrieveChildren(int id, std::vector<std::pair<int, std::string>>& children) = 0;
    // Removes the whole block [id, id + RANGE) in one transaction; an unknown id removes nothing.
    virtual void removeObject(int id) = 0;
    // Stamps UPDATED_AT of the row with the current time.
    virtual void update(int id) = 0;
    virtual int try_lock(int id, std::string& who, int seconds) = 0;
    virtual int check_lock(int id, std::string& who) = 0;
    virtual int release_lock(int id, std::string& who) = 0;

    // Items of a node: insert (NID is the owner's id less offset), read into the map's items by tag,
    // update the stored values.
    virtual void insert(const IntegerMap& items, int offset) = 0;
    virtual void read(int id, const IntegerMap& items) = 0;
    virtual void update(int id, const IntegerMap& items) = 0;
    virtual void insert(const QuantityMap& items, int offset) = 0;
    virtual void read(int id, const QuantityMap& items) = 0;
    virtual void update(int id, const QuantityMap& items) = 0;
    virtual void insert(const StringMap& items, int offset) = 0;
    virtual void read(int id, const StringMap& items) = 0;
    virtual void update(int id, const StringMap& items) = 0;
    virtual void insert(const IntegerVectorMap& items, int offset) = 0;
    virtual void read(int id, const IntegerVectorMap& items) = 0;
    virtual void update(int id, const IntegerVectorMap& items) = 0;
    virtual void insert(const QuantityVectorMap& items, int offset) = 0;
    virtual void read(int id, const QuantityVectorMap& items) = 0;
    virtual void update(int id, const QuantityVectorMap& items) = 0;
    virtual void insert(const QuantityMatrixMap& items, int offset) = 0;
    virtual void read(int id, const QuantityMatrixMap& items) = 0;
    virtual void update(int id, const QuantityMatrixMap& items) = 0;
    virtual void insert(const StringVectorMap& items, int offset) = 0;
    virtual void read(int id, const StringVectorMap& items) = 0;
    virtual void update(int id, const StringVectorMap& items) = 0;
};

#endif
