// Pictures of models: a flowsheet draws its units and streams, any other model its icon. Each picture is a
// file of its own named by the model's identifier in the store, as the application asks for it.
#include <tarvo/core/Model.h>
#include <tarvo/core/SvgDocument.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <fstream>

namespace {

constexpr int verbosityFile = 0;

void printPicture(Model& model, const char* dir, bool tiny, bool raster, int shift, int depth,
                  std::vector<std::string>& names) {
    const std::string path = std::string(dir) + "/" + std::to_string(static_cast<int>(model.id()) + shift) + ".svg";
    model.printSvg(path.c_str(), tiny, raster, depth);
    names.push_back(path);
}

// The pictures of the flowsheets below `model`, which stands `depth` levels below the root; `shift` turns
// identifiers in memory into those of the store.
void printFlowsheetsBelow(const Model& model, const char* dir, bool tiny, bool raster, int shift, int depth,
                          std::vector<std::string>& names) {
    for (Model* child : model.subModels()) {
        if (child->category() == Tarvo::Utility::Category::flowsheet)
            printPicture(*child, dir, tiny, raster, shift, depth + 1, names);
        printFlowsheetsBelow(*child, dir, tiny, raster, shift, depth + 1, names);
    }
}

} // namespace

void Model::printSvg(const char* path, bool tiny, bool raster, int) {
    TARVO_LOG(3) << "Entered";
    std::ofstream out(path);
    if (!out) throw ErrorRunTime(TARVO_FUNCTION, std::string("can not write to ") + path);
    const Icon& picture = icon();
    Tarvo::Core::Svg::open(out, picture.width, picture.height, 0.0, tiny);
    Tarvo::Core::Svg::image(out, 0.0, 0.0, picture.width, picture.height, picture.name + (raster ? ".png" : ".svg"));
    out << "</svg>\n";
    if (!out) throw ErrorRunTime(TARVO_FUNCTION, std::string("can not write to ") + path);
}

void Model::printSvgAll(const char* dir, bool tiny, bool raster, int id, std::vector<std::string>& names) {
    const int shift = id - static_cast<int>(this->id());
    printPicture(*this, dir, tiny, raster, shift, 0, names);
    printFlowsheetsBelow(*this, dir, tiny, raster, shift, 0, names);
}
