#ifndef TARVO_USER_CASE_H
#define TARVO_USER_CASE_H

#include <tarvo/core/SensitivityResult.h>
#include <tarvo/user/Handle.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class Model;
struct HomotopyInput;
struct SensitivityInput;

namespace Tarvo::User {

// A stored case loaded into memory, and what can be done with it. Nothing of the Error family passes
// this border: every operation turns a failure into a negative result code and leaves the message on
// standard error. A case that could not be loaded answers every operation with -81.
class Case {
public:
    // Rebuilds the whole tree of the object from the store.
    explicit Case(const Handle& handle);
    Case(const Case&) = delete;
    Case& operator=(const Case&) = delete;
    ~Case();

    bool valid() const;
    // After calculateSync: print the model and verify the solution.
    int setTest();
    // After calculateSync: recalculate once more with all logging on, without storing.
    int setCheck();

    // Work for the next calculateSync without the check flag to do while the server writes the results, on the
    // model as it will stand: the command line makes its spreadsheet report then (prepareOds).
    void setWhileStoring(std::function<void()> work);

    // Calculates the model, reports its messages and writes the results back to the store. A calculation
    // that ended with errors in the model's lists still returns 0: they are in the store and the reports.
    int calculateSync();
    // Recalculates with raised verbosity; stores nothing.
    int check();

    // A value of the tree by tag path, in SI units or in `unit`; error 0, -81 or -84.
    double get(const std::string& tag, int& error) const;
    double get(const std::string& tag, const std::string& unit, int& error) const;
    int getInteger(const std::string& tag, int& error) const;
    std::string getString(const std::string& tag, int& error) const;
    // Renames the root item and writes the tree back; the row of the node keeps its tag.
    int setTag(const char* tag);
    int setDescription(const char* description);

    // Assigns the start value of each variable of a homotopy input, in the units that its item holds; the
    // JSON form reads the input first. Nothing is stored.
    int set(const HomotopyInput& input);
    int set(const std::string& json);
    // A sensitivity run over the model, its results also in "SensitivityResults.xml" and the ".csv" and
    // ".svg" files beside it; error 0, -81 or -84. The model is not stored. The JSON form takes the input
    // as JSON and gives the results as JSON.
    SensitivityResult sensitivitySync(const SensitivityInput& input, int& error);
    std::string sensitivitySync(const std::string& json, int& error);
    // A homotopy run over the model, which is then stored at its last good point; a run whose first point
    // fails leaves the store as it was. 0, -81 or -84, also when a point failed.
    int homotopySync(const HomotopyInput& input);
    int homotopySync(const std::string& json);

    // The text report of the whole tree into `file`.
    int exportTxt(const std::string& file) const;
    // The JSON report of the whole tree into `file`.
    int exportJson(const std::string& file) const;
    // The XML report into the folder `dir`, which must exist: a file for each model, "<id>.xml", and the
    // table of contents "toc.xml". The style sheets and schemas that the files name are not written.
    int exportXml(const std::string& dir);
    // The spreadsheet report into `file`: the "content.xml" part of an OpenDocument spreadsheet, a table of
    // the streams of the tree with a row for each phase.
    int exportOds(const std::string& file) const;
    // Makes the spreadsheet document of the model as it stands, for the next exportOds to write; a failure is
    // left to exportOds, which makes the document again and reports it.
    void prepareOds();
    // The pictures into the folder `dir`, which must exist: "<id>.svg" in SVG 1.1 of the root and of each
    // flowsheet in the tree, named by their identifiers in the store; with `raster` the icons are taken as
    // PNG pictures. Gives the paths written, none on a failure; error 0, -81 or -84.
    std::vector<std::string> exportSvgs(const std::string& dir, bool raster, int& error) const;
    // The whole tree into `file`, which must exist and be empty, as a store of its own.
    int exportDataBase(const std::string& file) const;

    Model* model() const;

private:
    struct Record;
    // Runs `operation` on the model: -81 without one, -84 on an Error, which goes to standard error.
    template <typename F> int guarded(const char* function, F operation) const;
    // The frame of the reports that go into one file: `write(model, stream)` fills it. `signature` is the
    // caller's, for its log line and its message.
    template <typename F> int exportFile(const char* signature, const std::string& file, F write) const;
    std::unique_ptr<Record> record_;
};

} // namespace Tarvo::User

#endif
