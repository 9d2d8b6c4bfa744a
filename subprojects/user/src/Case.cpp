#include <tarvo/core/Homotopy.h>
#include <tarvo/core/HomotopyInputJson.h>
#include <tarvo/core/Model.h>
#include <tarvo/core/Report.h>
#include <tarvo/core/Sensitivity.h>
#include <tarvo/core/SensitivityInputJson.h>
#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/persistency/PersistencyPostgres.h>
#include <tarvo/persistency/PersistencySqlite.h>
#include <tarvo/user/Case.h>
#include <tarvo/user/ErrorInput.h>
#include <tarvo/user/InputRange.h>
#include <tarvo/user/Kernel.h>
#include <tarvo/user/ResultCodes.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>

namespace Tarvo::User {

namespace {

constexpr int verbosityFile = 0;
const std::string rule80(80, '=');
const std::string dashes80(80, '-');

// Prints the model and recalculates it once more with all logging on; the results are not stored.
void recalculateLoudly(Model& model) {
    TARVO_LOG_STATIC(1) << rule80;
    if (Utility::logPasses(verbosityFile, 1)) model.print(std::cout, true, true, true, true);
    TARVO_LOG_STATIC(1) << dashes80;
    Utility::setVerbosityGlobal(Utility::verbosityGlobal + 10);
    try {
        model.calculate(0);
    } catch (...) {
        Utility::setVerbosityGlobal(Utility::verbosityGlobal - 10);
        throw;
    }
    Utility::setVerbosityGlobal(Utility::verbosityGlobal - 10);
    TARVO_LOG_STATIC(1) << rule80;
}

// A study would carry the quantity at `path` through `start` and `end` (in `unit`, or in SI when it is
// empty), and all values between them; one that no state can have is refused before anything is calculated.
void refuseImpossible(Model& model, const std::string& path, const std::string& unit, double start, double end) {
    const Value& item = model.Q(path);
    if (!unit.empty()) item.checkuom(unit);
    for (double bound : {start, end}) {
        const double si = unit.empty() ? bound : Value(bound, unit).toDouble();
        const std::string refusal = inputRefusal(path, item, si);
        if (!refusal.empty()) throw ErrorInput(TARVO_FUNCTION, refusal);
    }
}

} // namespace

struct Case::Record {
    std::unique_ptr<Model> model;
    bool test = false;
    bool check = false;
    std::optional<std::string> odsDocument; // made by prepareOds, for the next exportOds
    std::function<void()> whileStoring;     // for the next calculateSync
};

Case::Case(const Handle& handle) : record_(std::make_unique<Record>()) {
    try {
        PersistencyPostgres store;
        TARVO_LOG_STATIC(3) << "Retrieving " << handle.tag() << " of type " << handle.type()
                            << " from persistent storage database";
        record_->model.reset(my_cast<Model*>(
            NodeFactory::create(handle.type(), Tarvo::Persistency::Defaults(), handle.id(), &store, nullptr, nullptr),
            TARVO_FUNCTION));
        TARVO_LOG_STATIC(4) << "initializeNonPersistents";
        record_->model->initializeNonPersistents();
        TARVO_LOG_STATIC(4) << "Done";
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        std::cerr << e.message() << std::endl;
        record_->model.reset();
    }
}

Case::~Case() = default;

bool Case::valid() const { return record_->model != nullptr; }

Model* Case::model() const { return record_->model.get(); }

int Case::setTest() {
    record_->test = true;
    return success;
}

int Case::setCheck() {
    record_->check = true;
    return success;
}

template <typename F> int Case::guarded(const char* function, F operation) const {
    if (!record_->model) return caseInvalid;
    try {
        return operation(*record_->model);
    } catch (Error& e) {
        e.append(function);
        std::cerr << e.message() << std::endl;
        return caseServerError;
    }
}

void Case::setWhileStoring(std::function<void()> work) { record_->whileStoring = std::move(work); }

int Case::calculateSync() {
    const std::string function = TARVO_FUNCTION;
    record_->odsDocument.reset();
    const std::function<void()> whileStoring = std::move(record_->whileStoring);
    record_->whileStoring = nullptr;
    return guarded(function.c_str(), [&](Model& model) {
        model.calculate(0);
        model.reportMessages();
        TARVO_LOG_STATIC(1) << "Computation complete with " << model.errorList().size() << " errors and "
                            << model.warningList().size() << " warnings";
        TARVO_LOG_STATIC(1) << "Updating results to persistent storage";
        {
            PersistencyPostgres store;
            store.push_transaction();
            model.update(&store);
            // The check below changes the model; without it, the model stands as it will be reported.
            if (whileStoring && !record_->check) {
                store.send();
                whileStoring();
            }
            store.pop_transaction();
        }
        TARVO_LOG_STATIC(1) << "Updated results to persistent storage";
        if (record_->test) {
            TARVO_LOG_STATIC(1) << rule80;
            if (Utility::logPasses(verbosityFile, 1)) model.print(std::cout, true, true, true, true);
            TARVO_LOG_STATIC(1) << rule80;
        }
        if (record_->check) recalculateLoudly(model);
        if (record_->test) {
            TARVO_LOG_STATIC(1) << "Now verifying solution";
        }
        return success;
    });
}

int Case::check() {
    const std::string function = TARVO_FUNCTION;
    return guarded(function.c_str(), [&](Model& model) {
        recalculateLoudly(model);
        return success;
    });
}

double Case::get(const std::string& tag, int& error) const {
    double value = 0.0;
    error = guarded(TARVO_FUNCTION.c_str(), [&](Model& model) {
        value = model.Q(tag).toDouble();
        return success;
    });
    return error == success ? value : 0.0;
}

double Case::get(const std::string& tag, const std::string& unit, int& error) const {
    double value = 0.0;
    error = guarded(TARVO_FUNCTION.c_str(), [&](Model& model) {
        value = model.Q(tag).toDouble(unit);
        return success;
    });
    return error == success ? value : 0.0;
}

int Case::getInteger(const std::string& tag, int& error) const {
    int value = 0;
    error = guarded(TARVO_FUNCTION.c_str(), [&](Model& model) {
        value = model.I(tag);
        return success;
    });
    return error == success ? value : 0;
}

std::string Case::getString(const std::string& tag, int& error) const {
    std::string value;
    error = guarded(TARVO_FUNCTION.c_str(), [&](Model& model) {
        value = model.S(tag);
        return success;
    });
    return error == success ? value : std::string();
}

int Case::setTag(const char* tag) {
    return guarded(TARVO_FUNCTION.c_str(), [&](Model& model) {
        model.setTag(tag);
        PersistencyPostgres store;
        model.update(&store);
        return success;
    });
}

int Case::setDescription(const char* description) {
    return guarded(TARVO_FUNCTION.c_str(), [&](Model& model) {
        model.setDescription(description);
        PersistencyPostgres store;
        model.update(&store);
        return success;
    });
}

int Case::set(const HomotopyInput& input) {
    return guarded(TARVO_FUNCTION.c_str(), [&](Model& model) {
        for (const HomotopyVariable& v : input.controlled) model.Q(v.fullTag).active() = v.start;
        return success;
    });
}

int Case::set(const std::string& json) {
    return guarded(TARVO_FUNCTION.c_str(), [&](Model&) { return set(HomotopyInputJson(json)); });
}

SensitivityResult Case::sensitivitySync(const SensitivityInput& input, int& error) {
    Sensitivity sensitivity(input, "SensitivityResults.xml");
    error = guarded(TARVO_FUNCTION.c_str(), [&](Model& model) {
        for (const ControlledVariable& v : input.controlled)
            refuseImpossible(model, v.fullTag, v.unit, v.start, v.end);
        TARVO_LOG_STATIC(1) << "Entering sensitivity mode";
        sensitivity.attach(&model);
        TARVO_LOG_STATIC(1) << "Launch sensitivity";
        sensitivity.execute();
        return success;
    });
    return sensitivity.result();
}

std::string Case::sensitivitySync(const std::string& json, int& error) {
    SensitivityResult result;
    error = guarded(TARVO_FUNCTION.c_str(), [&](Model&) {
        int run = success;
        result = sensitivitySync(SensitivityInputJson(json), run);
        return run;
    });
    std::ostringstream out;
    result.printJson(out);
    return out.str();
}

int Case::homotopySync(const HomotopyInput& input) {
    return guarded(TARVO_FUNCTION.c_str(), [&](Model& model) {
        for (const HomotopyVariable& v : input.controlled) refuseImpossible(model, v.fullTag, "", v.start, v.end);
        TARVO_LOG_STATIC(1) << "Entering homotopy mode";
        Homotopy homotopy(input);
        homotopy.attach(&model);
        TARVO_LOG_STATIC(1) << "Launch homotopy";
        homotopy.execute();
        // After a first point that failed the model is back where the run began, which the store holds
        // already; writing it would only add the messages of the failed calculation.
        if (homotopy.goodPoints() == 0) return success;
        TARVO_LOG_STATIC(1) << "Updating results to persistent storage";
        {
            PersistencyPostgres store;
            model.update(&store);
        }
        TARVO_LOG_STATIC(1) << "Updated results to persistent storage";
        return success;
    });
}

int Case::homotopySync(const std::string& json) {
    return guarded(TARVO_FUNCTION.c_str(), [&](Model&) { return homotopySync(HomotopyInputJson(json)); });
}

template <typename F> int Case::exportFile(const char* signature, const std::string& file, F write) const {
    return guarded(Utility::shortFunctionName(signature).c_str(), [&](Model& model) {
        if (std::filesystem::exists(file) && Utility::logPasses(verbosityFile, 1))
            Utility::LogLine(signature, 1).stream() << "The " << file << " file exists and will be overwritten";
        std::ofstream out(file);
        if (out) write(model, out);
        if (!out) throw ErrorRunTime(Utility::shortFunctionName(signature), "can not write to " + file);
        return success;
    });
}

int Case::exportTxt(const std::string& file) const {
    return exportFile(__PRETTY_FUNCTION__, file,
                      [](const Model& model, std::ostream& out) { model.print(out, true, true, true, true); });
}

int Case::exportJson(const std::string& file) const {
    return exportFile(__PRETTY_FUNCTION__, file, [](const Model& model, std::ostream& out) { model.printJson(out, 0); });
}

int Case::exportOds(const std::string& file) const {
    const std::optional<std::string> document = std::move(record_->odsDocument);
    record_->odsDocument.reset();
    return exportFile(__PRETTY_FUNCTION__, file, [&](const Model& model, std::ofstream& out) {
        if (document)
            model.printOds(out, *document);
        else
            model.printOds(out);
    });
}

void Case::prepareOds() {
    if (!record_->model) return;
    try {
        record_->odsDocument = record_->model->odsDocument();
    } catch (const Error&) {
        record_->odsDocument.reset(); // exportOds makes it again, and reports the failure
    }
}

int Case::exportXml(const std::string& dir) {
    const std::string function = TARVO_FUNCTION;
    return guarded(function.c_str(), [&](Model& model) {
        // An empty name would put the files into the root folder of the file system.
        if (dir.empty()) throw ErrorRunTime(function, "no folder named for the xml report");
        TARVO_LOG_STATIC(1) << "Recursively dumping as xml";
        model.printXml(dir.c_str(), nullptr, nullptr);
        TARVO_LOG_STATIC(1) << "Dumping toc as xml";
        const std::string path = dir + "/toc.xml";
        std::ofstream out(path);
        if (!out) throw ErrorRunTime(function, "can not write to " + path);
        out << "<?xml version='1.0' encoding='UTF-8'?>" << std::endl;
        out << "<?xml-stylesheet type=\"text/xsl\" href=\"flowsheet.xsl\"?>" << std::endl;
        out << "<toc xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" xsi:noNamespaceSchemaLocation=\"toc_new.xsd\">"
            << std::endl;
        model.printXmlToc(out, 2);
        out << "  <version>" << kernelVersion << "</version>" << std::endl;
        out << "  <timestamp>" << Core::reportTimestamp() << "</timestamp>" << std::endl;
        out << "</toc>" << std::endl;
        if (!out) throw ErrorRunTime(function, "can not write to " + path);
        return success;
    });
}

std::vector<std::string> Case::exportSvgs(const std::string& dir, bool raster, int& error) const {
    std::vector<std::string> names;
    error = guarded(TARVO_FUNCTION.c_str(), [&](Model& model) {
        model.printSvgAll(dir.c_str(), false, raster, static_cast<int>(model.id()) - model.offset(), names);
        return success;
    });
    if (error != success) names.clear();
    return names;
}

int Case::exportDataBase(const std::string& file) const {
    return guarded(TARVO_FUNCTION.c_str(), [&](Model& model) {
        PersistencySqlite store(file);
        store.initialize();
        model.insert(&store);
        return success;
    });
}

} // namespace Tarvo::User
