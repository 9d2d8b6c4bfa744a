#ifndef TARVO_PERSISTENCY_TYPEVECTOR_H
#define TARVO_PERSISTENCY_TYPEVECTOR_H

#include <tarvo/persistency/Type.h>
#include <tarvo/utility/Error.h>

#include <vector>

// An item that holds a vector; element access checks the index.
template <typename T> class TypeVector : public Type<std::vector<T>> {
public:
    TypeVector(const std::string& tag, const std::string& description, std::size_t count, const T& element,
               Persistent* parent)
        : Type<std::vector<T>>(tag, description, std::vector<T>(count, element), parent) {}

    std::size_t size() const { return this->value_.size(); }
    T& at(std::size_t index) {
        if (index >= size()) outOfRange("TypeVector::at");
        return this->value_[index];
    }
    const T& at(std::size_t index) const {
        if (index >= size()) outOfRange("TypeVector::at");
        return this->value_[index];
    }
    T& operator[](std::size_t index) {
        if (index >= size()) outOfRange("TypeVector::operator[]");
        return this->value_[index];
    }
    const T& operator[](std::size_t index) const {
        if (index >= size()) outOfRange("TypeVector::operator[]");
        return this->value_[index];
    }
    // Keeps the first elements; new ones are default values of the element type.
    virtual void resize(std::size_t count) { this->value_.resize(count); }

protected:
    [[noreturn]] static void outOfRange(const char* function) {
        throw ErrorRunTime(function, "index is outside range: index larger than vector size");
    }
};

#endif
