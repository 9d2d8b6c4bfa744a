#ifndef TARVO_CORE_MODEL_H
#define TARVO_CORE_MODEL_H

#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/persistency/Object.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/SmartEnumerator.h>

#include <cassert>
#include <iosfwd>
#include <ostream>
#include <string>
#include <vector>

class ObjectiveNleAd;

// An object that can be calculated and collects the errors and warnings of its last calculation.
// Everything with numbers in it, from a phase to a whole flowsheet, is a Model. Errors of the model
// are values in its lists, not exceptions: a calculation goes on after one, and the final lists tell
// the user what happened.
class Model : public Object {
public:
    Model(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
          Persistent* root);

    // Elements of per-component items by component name, as "x[CO2]" or "K[1,CO2]".
    Value& Q(const std::string& name, const std::string& component) override;
    Value& Q(const std::string& name, int index, const std::string& component) override;
    using Object::Q;

    virtual Tarvo::Utility::Category category() const = 0;
    // Calculates with everything that this model needs; `level` is the nesting depth of the call.
    virtual void calculate(int level) = 0;
    // Called once, top down, after the whole tree of a new case has been built.
    virtual void setup() = 0;
    virtual int maximumIterations() const { return 200; }
    // Rebuilds what is not stored (pointers, solver state), after a retrieve or a construction.
    virtual void initializeNonPersistents() = 0;
    // The model's own system of equations, or null.
    virtual ObjectiveNleAd* objective() = 0;

    // A pristine model has never been calculated and may not start from earlier results.
    void setPristine();
    void setPristineRecursive();
    bool pristine() const { return nCalculations.value() == 0; }
    void countCalculation() { ++nCalculations.value(); }
    // Clears the input flag of every quantity of the subtree, so that a case can take new inputs.
    void unSetInput();
    void resetErrors();
    // Records a message of the last calculation; an empty text is ignored.
    void reportError(const std::string& text);
    void reportWarning(const std::string& text);
    // Gathers the messages of all descendant models, deepest first, each with the path of its origin
    // behind " @ ".
    void reportMessages();

    // The text report: a header, then strings, quantities and integers as asked, then the children.
    std::ostream& print(std::ostream& out, bool strings, bool quantities, bool integers, bool recursive) const;
    // The quantities of the subtree with their derivatives.
    std::ostream& printFull(std::ostream& out) const;
    // The XML report: the file "<dir>/<id>.xml" of this model, then, while it is still open, those of the
    // models below it. `previous` and `next` are this model's neighbours among its parent's children, or
    // null. A file that cannot be opened is an ErrorRunTime.
    virtual void printXml(const char* dir, Model* previous, Model* next) const;
    // This model's entry in the table of contents of the XML report, `level` blanks in, with the entries of
    // the models below it: streams first, then flowsheets, then the others.
    void printXmlToc(std::ostream& out, int level) const;
    // The picture of this model into the file `path`, in SVG 1.1 or, with `tiny`, in its tiny profile; with
    // `raster` the icons are taken as PNG pictures. `depth` counts the levels below the model drawn first.
    // Any model draws its icon; a flowsheet draws its units and streams. A file that cannot be opened is an
    // ErrorRunTime.
    virtual void printSvg(const char* path, bool tiny, bool raster, int depth);
    // The pictures of this model and of every flowsheet below it, each into "<dir>/<id>.svg", with `id` this
    // model's identifier in the store; the paths written are appended to `names`.
    void printSvgAll(const char* dir, bool tiny, bool raster, int id, std::vector<std::string>& names);
    // The HTML pages "<dir>/<id>.html" of the subtree, those below first, so that links find their targets.
    void printHtml(const char* dir) const;
    // The spreadsheet report: the "content.xml" part of an OpenDocument spreadsheet, with one table of the
    // streams of the subtree, those of a flowsheet ahead of those of its sub-flowsheets, a row for each phase.
    void printOds(std::ofstream& out) const;
    // The same document, made without writing it, and then written with its log line: a command makes it while
    // the store writes the results.
    std::string odsDocument() const;
    void printOds(std::ofstream& out, const std::string& document) const;

    // The children that are models, in the order of the children's map. Kept until the children change: a
    // calculation walks them at every evaluation, and the cast across the virtual bases that finds them costs
    // more than the walk.
    const std::vector<Model*>& subModels() const;

    const std::vector<std::string>& errorList() const { return errors.value(); }
    const std::vector<std::string>& warningList() const { return warnings.value(); }
    double duration() const { return duration_; }
    void setDuration(double seconds) { duration_ = seconds; }

protected:
    // Declares one quantity per component of the global list, tagged "<tag>[i]" and described
    // "<description> of <component>".
    void addComponentVariables(std::vector<Quantity>& items, const std::string& tag, const std::string& description,
                               const std::string& unit, double value);

    // Makes (or, from the store, finds) `count` embedded children tagged "<tag>[i]", each of the type
    // given by the string option "<typeOption>[i]" of `defaults`.
    template <typename T>
    void addSubObjects(int verbosity, const Tarvo::Persistency::Defaults& defaults, Persistency* persistency,
                       int count, const std::string& tag, const std::string& description,
                       const std::string& typeOption, const std::string& kind, std::vector<T*>& objects);

    Integer nCalculations{"nCalculations", "Number of times the model has be been calculated", 0, this};
    StringVector errors{"errors", "Errors from the last computation", 0, "", this};
    StringVector warnings{"warnings", "Warnings from the last computation", 0, "", this};

private:
    // subModels() and the children's version that it holds; a copy starts empty, for it points into the tree
    // of its source.
    struct SubModels {
        std::vector<Model*> models;
        unsigned version = ~0u;
        SubModels() = default;
        SubModels(const SubModels&) {}
        SubModels& operator=(const SubModels&) { return *this = SubModels(); }
        SubModels& operator=(SubModels&&) = default;
    };
    mutable SubModels subModels_;

    // The rows of the spreadsheet report: of the streams of `model` and of all models below it, of the
    // streams among the children of `model`, of one stream. `row` is the number of the next row; at 1 the
    // header goes first.
    void printRecursiveStreamsToOds_(std::ostream& out, const Model& model, int& row) const;
    void printStreamsToOds_(std::ostream& out, const Model& model, int& row) const;
    void printStreamToOds_(std::ostream& out, const Model& stream, int& row) const;
    // The spreadsheet document of printOds, without its log line.
    void writeOds_(std::ostream& out) const;

    void addSubObject(int verbosity, const Tarvo::Persistency::Defaults& defaults, int index, const std::string& tag,
                      const std::string& description, const std::string& typeOption, const std::string& kind);
    std::vector<Node*> storedSubObjects(const std::string& tag) const;

    double duration_ = 0;
};

template <typename T>
void Model::addSubObjects(int verbosity, const Tarvo::Persistency::Defaults& defaults, Persistency* persistency,
                          int count, const std::string& tag, const std::string& description,
                          const std::string& typeOption, const std::string& kind, std::vector<T*>& objects) {
    objects.clear();
    if (persistency) {
        const std::vector<Node*> stored = storedSubObjects(tag);
        int i = 0;
        for (Node* node : stored) {
            objects.push_back(my_cast<T*>(node, "Model::addSubObjects<"));
            ++i;
        }
        assert(i == count);
        return;
    }
    for (int i = 0; i < count; ++i) {
        addSubObject(verbosity, defaults, i, tag, description, typeOption, kind);
        objects.push_back(my_cast<T*>(&child(tag + "[" + std::to_string(i) + "]"), "Model::addSubObjects<"));
    }
}

#endif
