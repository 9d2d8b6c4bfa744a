#ifndef TARVO_PERSISTENCY_QUANTITYMATRIX_H
#define TARVO_PERSISTENCY_QUANTITYMATRIX_H

#include <tarvo/persistency/QuantityVector.h>

// A matrix of values stored column after column: element (row, column) is at rows * column + row.
class QuantityMatrix : public TypeVector<Value> {
public:
    QuantityMatrix(const std::string& tag, const std::string& description, std::size_t rows, std::size_t columns,
                   const Value& element, Persistent* parent)
        : TypeVector(tag, description, rows * columns, element, parent), rows_(rows) {}
    const std::string& type() const override;
    // [["0 ", "1 "], ["2 ", "3 "]]: the rows, each element in its print form.
    void print(std::ostream& out) const override;
    void resize(std::size_t count) override;

    std::size_t rows() const { return rows_; }
    std::size_t columns() const { return rows_ ? size() / rows_ : 0; }
    Value& operator()(std::size_t row, std::size_t column);
    const Value& operator()(std::size_t row, std::size_t column) const;

private:
    std::size_t rows_;
};

#endif
