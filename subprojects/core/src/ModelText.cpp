// The text report: every item of every model, for reading.
#include <tarvo/core/Model.h>

std::ostream& Model::print(std::ostream& out, bool strings, bool quantities, bool integers,
                           bool recursive) const {
    out << "****** type = " << type() << " TAG = " << tag() << " << DESCRIPTION " << description()
        << std::endl;
    if (strings) {
        out << "*** Begin String attributes" << std::endl;
        for (const auto& [tag, item] : stringItems())
            out << tag << " = " << item->value() << ' ' << item->description() << std::endl;
        out << "*** Begin StringVector attributes" << std::endl;
        for (const auto& [tag, item] : stringVectorItems()) {
            out << tag << " = [";
            for (const std::string& element : item->value())
                out << element << ", ";
            out << "] " << item->description() << std::endl;
        }
    }
    if (quantities) {
        out << "*** Begin Quantity attributes" << std::endl;
        for (const auto& [tag, item] : quantityItems())
            out << tag << " = " << static_cast<const Value&>(*item) << ' ' << item->description()
                << std::endl;
    }
    if (integers) {
        out << "*** Begin Integer  attributes" << std::endl;
        for (const auto& [tag, item] : integerItems())
            out << tag << " = " << item->value() << ' ' << item->description() << std::endl;
    }
    if (recursive) {
        for (const auto& [tag, child] : children()) {
            out << "*** Begin " << tag << ' ' << child->description() << std::endl;
            if (const auto* model = dynamic_cast<const Model*>(child.get()))
                model->print(out, strings, quantities, integers, true);
            out << "*** End " << tag << ' ' << child->description() << std::endl;
        }
    }
    return out << std::endl;
}

std::ostream& Model::printFull(std::ostream& out) const {
    out << "****** type = " << type() << " TAG = " << tag() << " << DESCRIPTION " << description()
        << std::endl;
    out << "*** Begin Quantity attributes" << std::endl;
    for (const auto& [tag, item] : quantityItems())
        out << tag << " = " << item->active().str() << ' ' << item->description() << std::endl;
    for (const auto& [tag, child] : children()) {
        out << "*** Begin " << tag << ' ' << child->description() << std::endl;
        if (const auto* model = dynamic_cast<const Model*>(child.get())) model->printFull(out);
        out << "*** End " << tag << ' ' << child->description() << std::endl;
    }
    return out << std::endl;
}
