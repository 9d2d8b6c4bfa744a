// The type names and print forms of the value items.
#include <tarvo/persistency/Integer.h>
#include <tarvo/persistency/IntegerVector.h>
#include <tarvo/persistency/Quantity.h>
#include <tarvo/persistency/QuantityMatrix.h>
#include <tarvo/persistency/QuantityVector.h>
#include <tarvo/persistency/String.h>
#include <tarvo/persistency/StringVector.h>

namespace {

// Elements joined by ", " inside brackets, each written by `element`.
template <typename V, typename F> void printList(std::ostream& out, const V& values, F element) {
    out << '[';
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i) out << ", ";
        element(values[i]);
    }
    out << ']';
}

// Values in a shared function so that any vector or matrix grows in the units of its first element.
void resizeValues(std::vector<Value>& values, std::size_t count) {
    const Value fill = values.empty() ? Value(0.0) : Value(0.0, values.front().units());
    values.resize(count, fill);
}

} // namespace

const std::string& String::type() const {
    static const std::string name = "String";
    return name;
}

const std::string& Integer::type() const {
    static const std::string name = "Integer";
    return name;
}

const std::string& Quantity::type() const {
    static const std::string name = "Quantity";
    return name;
}

const std::string& IntegerVector::type() const {
    static const std::string name = "IntegerVector";
    return name;
}

void IntegerVector::print(std::ostream& out) const {
    printList(out, value_, [&](int v) { out << v; });
}

const std::string& StringVector::type() const {
    static const std::string name = "StringVector";
    return name;
}

void StringVector::print(std::ostream& out) const {
    printList(out, value_, [&](const std::string& v) { out << '"' << v << '"'; });
}

const std::string& QuantityVector::type() const {
    static const std::string name = "QuantityVector";
    return name;
}

void QuantityVector::print(std::ostream& out) const {
    printList(out, value_, [&](const Value& v) { out << '"' << v << '"'; });
}

void QuantityVector::resize(std::size_t count) { resizeValues(value_, count); }

const std::string& QuantityMatrix::type() const {
    static const std::string name = "QuantityMatrix";
    return name;
}

void QuantityMatrix::print(std::ostream& out) const {
    out << '[';
    for (std::size_t r = 0; r < rows_; ++r) {
        if (r) out << ", ";
        out << '[';
        for (std::size_t c = 0; c < columns(); ++c) out << (c ? ", " : "") << '"' << (*this)(r, c) << '"';
        out << ']';
    }
    out << ']';
}

void QuantityMatrix::resize(std::size_t count) { resizeValues(value_, count); }

Value& QuantityMatrix::operator()(std::size_t row, std::size_t column) {
    if (row + 1 > rows_)
        throw ErrorRunTime("QuantityMatrix::operator()", "row index is outside range: index larger than number of rows");
    return at(rows_ * column + row);
}

const Value& QuantityMatrix::operator()(std::size_t row, std::size_t column) const {
    if (row + 1 > rows_)
        throw ErrorRunTime("QuantityMatrix::operator()", "row index is outside range: index larger than number of rows");
    return at(rows_ * column + row);
}
