// The browsable XML report: one file for each model, named by its identifier so that links between the files
// need only the number, and the entries of a table of contents. The style sheets and schemas that the files
// name lie beside them; the kernel only names them.
#include <tarvo/core/Model.h>
#include <tarvo/core/Report.h>
#include <tarvo/core/Version.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <fstream>
#include <sstream>

using Tarvo::Core::escapeXml;

namespace {

constexpr int verbosityFile = 0;

// The namespace of the schema-instance attributes, declared on the root element of every file.
constexpr const char* schemaInstance = " xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"";

// The attributes that name a node wherever it appears: its own element, a breadcrumb, a sibling, a
// submodel, an entry of the table of contents.
std::string identity(const Node& node) {
    std::ostringstream out;
    out << " tag=\"" << escapeXml(node.tag()) << "\" description=\"" << escapeXml(node.description())
        << "\" type =\"" << escapeXml(node.type()) << "\" id =\"" << node.id() << "\" fullpath =\""
        << escapeXml(node.fullTag()) << '"';
    return out.str();
}

// The number of a quantity without its unit, with the digits of the text report.
std::string number(const Value& value) {
    std::ostringstream out;
    out.precision(12);
    out << value.toDouble();
    return out.str();
}

const char* truth(bool flag) {
    return flag ? "true" : "false";
}

} // namespace

void Model::printXml(const char* dir, Model* previous, Model* next) const {
    TARVO_LOG(3) << "Entered with " << id();
    const std::string path = std::string(dir) + "/" + std::to_string(id()) + ".xml";
    std::ofstream out(path);
    if (!out) throw ErrorRunTime(TARVO_FUNCTION, "can not write to " + path);

    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>" << std::endl;
    out << "<?xml-stylesheet type=\"text/xsl\" href=\"model.xsl\"?>" << std::endl;
    out << "<model" << schemaInstance << " xsi:noNamespaceSchemaLocation=\"model_new.xsd\"" << identity(*this)
        << '>' << std::endl;

    out << "  <breadcrumbs>" << std::endl;
    for (const Node* node = this; !node->isRoot();) {
        node = node->parentNode();
        out << "    <breadcrumb" << identity(*node) << "/>" << std::endl;
    }
    out << "  </breadcrumbs>" << std::endl;
    if (previous) out << "  <preceding-sibling" << identity(*previous) << "/>" << std::endl;
    if (next) out << "  <following-sibling" << identity(*next) << "/>" << std::endl;

    out << "  <strings>" << std::endl;
    for (const auto& [tag, item] : strings)
        out << "    <string tag=\"" << escapeXml(tag) << "\" description=\"" << escapeXml(item->description())
            << "\" value=\"" << escapeXml(item->value()) << "\"/>" << std::endl;
    out << "  </strings>" << std::endl;

    out << "  <integers>" << std::endl;
    for (const auto& [tag, item] : integers)
        out << "    <integer tag=\"" << escapeXml(tag) << "\" description=\""
            << escapeXml(item->description()) << "\" value=\"" << item->value() << "\"/>" << std::endl;
    out << "  </integers>" << std::endl;

    out << "  <quantities>" << std::endl;
    for (const auto& [tag, item] : quantities)
        out << "    <quantity tag=\"" << escapeXml(tag) << "\" description=\""
            << escapeXml(item->description()) << "\" value=\"" << number(*item) << "\" unit=\""
            << item->unitText() << "\" input=\"" << truth(item->input()) << "\" output=\""
            << truth(item->output()) << "\" />" << std::endl;
    out << "  </quantities>" << std::endl;

    // Each child's file is written right behind its line, so the files of a branch are open together.
    out << "  <submodels>" << std::endl;
    const std::vector<Model*> models = subModels();
    for (std::size_t i = 0; i < models.size(); ++i) {
        out << "    <submodel" << identity(*models[i]) << "/>" << std::endl;
        models[i]->printXml(dir, i > 0 ? models[i - 1] : nullptr,
                            i + 1 < models.size() ? models[i + 1] : nullptr);
    }
    out << "  </submodels>" << std::endl;

    out << "  <version>" << Tarvo::Core::kernelVersion << "</version>" << std::endl;
    out << "  <timestamp>" << Tarvo::Core::reportTimestamp() << "</timestamp>" << std::endl;
    out << "</model>" << std::endl;
    if (!out) throw ErrorRunTime(TARVO_FUNCTION, "can not write to " + path);
    TARVO_LOG(4) << "Done";
}

void Model::printXmlToc(std::ostream& out, int level) const {
    assert(level >= 0);
    const std::string indent(static_cast<std::size_t>(level), ' ');
    const std::string& element =
        Tarvo::Utility::SmartEnumerator<Tarvo::Utility::Category>::item(category()).name();
    out << indent << '<' << element << identity(*this);
    const std::vector<Model*> models = subModels();
    if (models.empty()) {
        out << "/>" << std::endl;
        return;
    }
    out << '>' << std::endl;
    // A reader of the contents meets the streams of a flowsheet first, then its sub-flowsheets, then the
    // rest.
    using Tarvo::Utility::Category;
    for (const Model* model : models)
        if (model->category() == Category::stream) model->printXmlToc(out, level + 2);
    for (const Model* model : models)
        if (model->category() == Category::flowsheet) model->printXmlToc(out, level + 2);
    for (const Model* model : models)
        if (model->category() != Category::stream && model->category() != Category::flowsheet)
            model->printXmlToc(out, level + 2);
    out << indent << "</" << element << '>' << std::endl;
}
