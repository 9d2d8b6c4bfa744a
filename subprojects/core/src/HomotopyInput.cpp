#include <tarvo/core/HomotopyInput.h>

#include <ostream>

void HomotopyInput::print(std::ostream& out) const {
    out << "type = " << type << "\nid = " << id << "\npoints = " << points << "\nhomotopy variables:\n";
    for (std::size_t i = 0; i < controlled.size(); ++i)
        out << i << "-th controlled variable: " << controlled[i].fullTag << " from " << controlled[i].start << " to "
            << controlled[i].end << "\n";
}
