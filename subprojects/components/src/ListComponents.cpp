#include <tarvo/components/ListComponents.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include <cassert>

ListComponents components;
int NCOMPONENTS = 0;

ListComponents::~ListComponents() {
    clear();
}

void ListComponents::add(ComponentGeneric* c) {
    assert(c != nullptr);
    components_.resize(n_ + 1);
    components_[n_] = c;
    c->index = n_;
    indices_[c->name] = n_;
    if (!names_.empty()) names_ += ';';
    names_ += c->name;
    ++n_;
    NCOMPONENTS = n_;
}

int ListComponents::lookup(const std::string& name) const {
    const auto it = indices_.find(name);
    if (it == indices_.end()) throw ErrorNoComponent(TARVO_FUNCTION, name);
    return it->second;
}

ComponentGeneric* ListComponents::operator[](const std::string& name) const {
    try {
        return components_[lookup(name)];
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        throw;
    }
}

void ListComponents::clear() {
    for (ComponentGeneric* c : components_)
        delete c;
    components_.clear();
    indices_.clear();
    names_.clear();
    n_ = 0;
    NCOMPONENTS = n_;
}
