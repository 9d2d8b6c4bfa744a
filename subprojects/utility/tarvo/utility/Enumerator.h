#ifndef TARVO_UTILITY_ENUMERATOR_H
#define TARVO_UTILITY_ENUMERATOR_H

#include <tarvo/utility/EnumeratorInterface.h>

#include <string>
#include <vector>

namespace Tarvo::Core {

// An enumeration made at run time, while the model collection registers itself: it tells a user
// interface which values a string option accepts.
class Enumerator : public Utility::EnumeratorInterface {
public:
    Enumerator(std::string name, std::string description)
        : name_(std::move(name)), description_(std::move(description)) {}
    void addItem(const Utility::EnumeratorItem& item) { items_.push_back(item); }

    const std::string& name() const override { return name_; }
    const std::string& description() const override { return description_; }
    const_iterator begin() const override { return items_.begin(); }
    const_iterator end() const override { return items_.end(); }
    std::size_t size() const override { return items_.size(); }

private:
    std::string name_;
    std::string description_;
    std::vector<Utility::EnumeratorItem> items_;
};

// The kernel's list of enumerators, in order of registration; the `enumerators` command prints it.
void addEnumerator(const Enumerator& enumerator);
const std::vector<Enumerator>& enumerators();
// The enumerator of that name in the kernel's list, or null.
const Enumerator* findEnumerator(const std::string& name);
void clearEnumerators();

} // namespace Tarvo::Core

#endif
