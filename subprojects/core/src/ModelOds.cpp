// The spreadsheet report: the "content.xml" part of an OpenDocument spreadsheet, one table of all streams of
// the tree with a row for each of their phases. The kernel writes only this document; packing it into a
// spreadsheet file is left to whoever wants one.
#include <tarvo/core/Model.h>
#include <tarvo/core/Report.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <fstream>
#include <initializer_list>
#include <sstream>

using Tarvo::Core::escapeXml;

namespace {

constexpr int verbosityFile = 0;

// The whole test of what is a stream: its type begins with this word.
const std::string streamPrefix = "Stream";

constexpr const char* rowStart = "    <table:table-row>\n";
constexpr const char* rowEnd = "    </table:table-row>\n";

void textCell(std::ostream& out, const std::string& text) {
    out << "      <table:table-cell><text:p>" << text << "</text:p></table:table-cell>\n";
}

// Numbers are in SI, the units that the headings name.
void numberCell(std::ostream& out, double number) {
    out << "      <table:table-cell office:value-type=\"float\" office:value=\"" << number << "\"/>\n";
}

void emptyCell(std::ostream& out) { out << "      <table:table-cell/>\n"; }

// The tag of a phase, then the numbers of its scalar quantities in the order of its map: the columns line up
// as long as the phases list the same quantities as the total phase of the first stream, which names them.
void phaseCells(std::ostream& out, const Object& phase) {
    textCell(out, phase.tag());
    for (const auto& [tag, item] : phase.quantityItems())
        numberCell(out, item->toDouble());
}

} // namespace

void Model::printOds(std::ofstream& out) const {
    TARVO_LOG(3) << "Entered for " << fullTag();
    writeOds_(out);
}

void Model::printOds(std::ofstream& out, const std::string& document) const {
    TARVO_LOG(3) << "Entered for " << fullTag();
    out << document;
}

std::string Model::odsDocument() const {
    std::ostringstream out;
    writeOds_(out);
    return out.str();
}

void Model::writeOds_(std::ostream& out) const {
    const std::streamsize precision = out.precision(12); // the digits of the other reports
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<office:document-content \n"
           "    xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\"\n"
           "    xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\"\n"
           "    xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\"\n"
           "    office:version=\"1.1\">\n"
           " <office:body>\n"
           "  <office:spreadsheet>\n"
           "   <table:table table:name=\"Tabella1\" table:print=\"false\">\n";
    int row = 1;
    printRecursiveStreamsToOds_(out, *this, row);
    out << "   </table:table>\n"
           "  </office:spreadsheet>\n"
           " </office:body>\n"
           "</office:document-content>\n";
    out.precision(precision);
}

// The streams of a flowsheet come ahead of those of its sub-flowsheets.
void Model::printRecursiveStreamsToOds_(std::ostream& out, const Model& model, int& row) const {
    printStreamsToOds_(out, model, row);
    for (const Model* child : model.subModels())
        printRecursiveStreamsToOds_(out, *child, row);
}

void Model::printStreamsToOds_(std::ostream& out, const Model& model, int& row) const {
    for (const Model* child : model.subModels())
        if (child->type().compare(0, streamPrefix.size(), streamPrefix) == 0) printStreamToOds_(out, *child, row);
}

// The stream's own row holds its total phase; each other phase has a row of its own below it, with the
// cells of the stream left empty.
void Model::printStreamToOds_(std::ostream& out, const Model& stream, int& row) const {
    const Object& total = stream.at("Tphase");
    if (row == 1) {
        out << rowStart;
        for (const char* heading : {"Id", "Row", "Complete tag", "Description", "Type", "Pressure [Pa]",
                                    "Temperature [K]", "Phase tag"})
            textCell(out, heading);
        for (const auto& [tag, item] : total.quantityItems())
            textCell(out, tag + " [" + item->unitText() + "]");
        out << rowEnd;
    }

    out << rowStart;
    numberCell(out, stream.id());
    numberCell(out, row);
    textCell(out, escapeXml(stream.fullTag()));
    textCell(out, stream.description());
    textCell(out, escapeXml(stream.type()));
    for (const char* tag : {"P", "T"}) {
        const auto it = stream.quantityItems().find(tag);
        if (it == stream.quantityItems().end())
            throw ErrorRunTime(TARVO_FUNCTION, std::string("non-existant tag ") + tag + " in " + stream.fullTag());
        numberCell(out, it->second->toDouble());
    }
    phaseCells(out, total);
    for (const Model* phase : stream.subModels()) {
        if (phase == &total) continue;
        out << rowEnd;
        ++row;
        out << rowStart;
        numberCell(out, phase->id());
        numberCell(out, row);
        textCell(out, escapeXml(phase->fullTag()));
        for (int i = 0; i < 4; ++i)
            emptyCell(out);
        phaseCells(out, *phase);
    }
    out << rowEnd;
    ++row;
}
