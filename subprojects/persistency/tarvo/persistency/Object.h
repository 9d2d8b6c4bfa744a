#ifndef TARVO_PERSISTENCY_OBJECT_H
#define TARVO_PERSISTENCY_OBJECT_H

#include <tarvo/persistency/Integer.h>
#include <tarvo/persistency/IntegerVector.h>
#include <tarvo/persistency/Node.h>
#include <tarvo/persistency/Persistency.h>
#include <tarvo/persistency/Quantity.h>
#include <tarvo/persistency/QuantityMatrix.h>
#include <tarvo/persistency/QuantityVector.h>
#include <tarvo/persistency/String.h>
#include <tarvo/persistency/StringVector.h>

#include <map>
#include <string>
#include <vector>

// A node with tagged variables, reached by tag paths such as "COND.P", "S01:Tphase.ndot", "A[3]",
// "A[1][2]", "A[1,2]" or "x[CO2]". Model classes declare their items as data members and enter them
// with addVariable; the maps hold plain pointers, in the order in which they are stored.
class Object : public Node {
public:
    Object(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
           Persistent* root);

    // Tag paths. Every miss throws, so that a wrong tag in model code is reported, not ignored.
    Value& Q(const std::string& path);
    int& I(const std::string& path);
    std::string& S(const std::string& path);
    Value& Q(const std::string& name, int index);
    Value& Q(const std::string& name, int row, int column);
    int& I(const std::string& name, int index);
    std::string& S(const std::string& name, int index);
    // An element of a quantity array by a string key; here a dimensionless zero, in a Model by
    // component name.
    virtual Value& Q(const std::string& name, const std::string& key);
    virtual Value& Q(const std::string& name, int index, const std::string& key);

    QuantityVector& QV(const std::string& tag);
    QuantityMatrix& QM(const std::string& tag);
    IntegerVector& IV(const std::string& tag);
    StringVector& SV(const std::string& tag);
    bool hasQ(const std::string& tag) const { return quantities.count(tag) != 0; }
    bool hasI(const std::string& tag) const { return integers.count(tag) != 0; }
    bool hasS(const std::string& tag) const { return strings.count(tag) != 0; }

    // A child object by path; throws "Node is not an Object" for a node without items.
    Object& at(const std::string& path) const;
    Object& at(const std::string& tag, int index) const;

    void addVariable(Integer& item) { integers[item.tag()] = &item; }
    void addVariable(IntegerVector& item) { integerVectors[item.tag()] = &item; }
    void addVariable(Quantity& item) { quantities[item.tag()] = &item; }
    void addVariable(QuantityVector& item) { quantityVectors[item.tag()] = &item; }
    void addVariable(QuantityMatrix& item) { quantityMatrices[item.tag()] = &item; }
    void addVariable(String& item) { strings[item.tag()] = &item; }
    void addVariable(StringVector& item) { stringVectors[item.tag()] = &item; }
    // Fills `items` with `count` quantities tagged "<tag>[i]", described "<description> of item i",
    // and enters them. The vector must not grow afterwards: the maps point into it.
    void addVariables(std::vector<Quantity>& items, int count, const std::string& tag,
                      const std::string& description, const std::string& unit, double value);
    void addVariables(std::vector<Integer>& items, int count, const std::string& tag,
                      const std::string& description, int value);
    void addVariables(std::vector<String>& items, int count, const std::string& tag,
                      const std::string& description, const std::string& value);

    // Construction parameters, read before the object's items exist: from the defaults of a new object,
    // from the store for a rebuilt one. A negative (or empty) result takes `fallback`; bounds exclude.
    static int retrieveInteger(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                               const std::string& tag, int minimum, int maximum, int fallback);
    static std::string retrieveString(const Tarvo::Persistency::Defaults& defaults, uint32_t id,
                                      Persistency* persistency, const std::string& tag, const std::string& fallback);

    // The values of all quantities of the subtree, kept for a later pop().
    void push();
    void pop();
    void clear();

    Node& operator=(const Node& other) override;
    Node& operator=(Node&& other) override;
    bool equals(const Node& other) const override;
    // As Node's, with a section for each item map that is not empty before the children.
    std::ostream& printJson(std::ostream& out, int level) const override;

    void insertStuff(Persistency* persistency, int offset) const override;
    void updateStuff(Persistency* persistency, int offset) const override;
    void restoreQuantities(Persistency* persistency) override;
    void restoreParameters(Persistency* persistency) override;

    const IntegerMap& integerItems() const { return integers; }
    const IntegerVectorMap& integerVectorItems() const { return integerVectors; }
    const QuantityMap& quantityItems() const { return quantities; }
    const QuantityVectorMap& quantityVectorItems() const { return quantityVectors; }
    const QuantityMatrixMap& quantityMatrixItems() const { return quantityMatrices; }
    const StringMap& stringItems() const { return strings; }
    const StringVectorMap& stringVectorItems() const { return stringVectors; }

protected:
    // A dimensionless zero that callers may not keep: it is made afresh for each request.
    static Value& scratchZero();

    std::vector<std::map<std::string, double>> savedQuantities;
    IntegerMap integers;
    IntegerVectorMap integerVectors;
    QuantityMap quantities;
    QuantityVectorMap quantityVectors;
    QuantityMatrixMap quantityMatrices;
    StringMap strings;
    StringVectorMap stringVectors;

private:
    // The object that holds the last part of a dotted name, and that last part.
    std::pair<Object*, std::string> owner(const std::string& name);
    Value& element(const std::string& path);
};

#endif
