#include <tarvo/core/Model.h>
#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/persistency/PersistencyPostgres.h>
#include <tarvo/user/Cases.h>
#include <tarvo/user/ErrorInput.h>
#include <tarvo/user/InputRange.h>
#include <tarvo/user/ResultCodes.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <iostream>
#include <memory>

namespace Tarvo::User {

namespace {

constexpr int verbosityFile = 0;

Handle failedHandle() {
    Handle::Record record;
    record.id = -1;
    return Handle(record);
}

Handle handleOf(const Model& model) {
    Handle::Record record;
    record.id = static_cast<int>(model.id()) - model.offset();
    record.uuid = model.uuid();
    record.type = model.type();
    record.tag = model.tag();
    record.description = model.description();
    record.created = model.createdAt();
    record.updated = model.updatedAt();
    record.caseRoot = true;
    return Handle(record);
}

// Inserts the tree, one transaction, and names its id on standard output as soon as the commit returns: a
// caller whose kernel is killed before it writes id.txt still finds the id there.
Handle insertAnnounced(Model& model, PersistencyPostgres& store) {
    model.insert(&store);
    TARVO_LOG_STATIC(1) << "Saved to persistent storage";
    Handle handle = handleOf(model);
    std::cout << "Stored with id " << handle.id() << std::endl;
    return handle;
}

// Only the types of the catalogue that may stand at the root make a case; the others are parts of one.
void refuseUnlessRoot(const std::string& type) {
    if (NodeFactory::registered(type) && !NodeFactory::typeDescriptor(type).instantiable)
        throw ErrorInput(TARVO_FUNCTION, "type " + type + " can not be the root of a case");
}

// The values of the descriptor, in SI, each in the units of its item; a value that no item can take is
// refused by name.
void setUserInputs(Model& model, const CaseDescriptor& descriptor) {
    for (const auto& [path, value] : descriptor.quantities()) {
        Value* q = nullptr;
        try {
            q = &model.Q(path);
        } catch (Error&) {
            throw ErrorInput(TARVO_FUNCTION, "quantity " + path + " of the descriptor is not in the case");
        }
        const std::string refusal = inputRefusal(path, *q, value);
        if (!refusal.empty()) throw ErrorInput(TARVO_FUNCTION, refusal);
        q->active() = value;
        q->setInput();
    }
}

// Builds, sets up and stores a new case, and with `drawings` writes its pictures into the working folder;
// the model lives only for this call.
Handle createCase_(const CaseDescriptor& descriptor, int& error, bool drawings) {
    refuseUnlessRoot(descriptor.type());
    TARVO_LOG_STATIC(1) << "Instantiate flowsheet";
    std::unique_ptr<Model> model(my_cast<Model*>(
        NodeFactory::create(descriptor.type(), descriptor, 0, nullptr, nullptr, nullptr), TARVO_FUNCTION));
    TARVO_LOG_STATIC(2) << "Set up inputs and cuts";
    model->setup();
    // After setup, which assigns the case's own inputs: the user's values win over them.
    TARVO_LOG_STATIC(2) << "Set user inputs";
    setUserInputs(*model, descriptor);
    TARVO_LOG_STATIC(1) << "Creation complete";
    model->reportMessages();
    TARVO_LOG_STATIC(1) << "Saving to persistent storage";
    PersistencyPostgres store;
    const Handle handle = insertAnnounced(*model, store);
    if (drawings) {
        TARVO_LOG_STATIC(1) << "Dumping all flowheet objects as tiny SVGs";
        std::vector<std::string> names;
        model->printSvgAll(".", true, true, handle.id(), names);
    }
    error = success;
    return handle;
}

// The facade's frame around an operation that makes a handle: refused input becomes -92, other failures
// -93, both with an invalid handle.
template <typename F> Handle handleOperation(const std::string& function, int& error, F operation) {
    const auto fail = [&](Error& e, int code) {
        e.append(function);
        std::cerr << e.message() << std::endl;
        error = code;
        return failedHandle();
    };
    try {
        return operation();
    } catch (ErrorInput& e) {
        return fail(e, invalidArgument);
    } catch (Error& e) {
        return fail(e, serverError);
    }
}

} // namespace

Handle createCase(const std::string& type, const std::string& tag, const std::string& description,
                  const std::string& options, int& error) {
    return handleOperation(TARVO_FUNCTION, error, [&] {
        CaseDescriptor descriptor(type, tag, description);
        descriptor.parseOptions(options);
        TARVO_LOG_STATIC(1) << "Creating a new model " << static_cast<const Tarvo::Persistency::Defaults&>(descriptor);
        return createCase_(descriptor, error, true);
    });
}

Handle createCase(const std::string& type, const std::string& tag, const std::string& description,
                  const std::map<std::string, std::string>& stringOptions,
                  const std::map<std::string, int>& integerOptions, int& error) {
    return handleOperation(TARVO_FUNCTION, error, [&] {
        CaseDescriptor descriptor(type, tag, description);
        for (const auto& [key, value] : stringOptions) descriptor.setString(key, value);
        for (const auto& [key, value] : integerOptions) descriptor.setInteger(key, value);
        TARVO_LOG_STATIC(1) << "Creating a new model " << static_cast<const Tarvo::Persistency::Defaults&>(descriptor);
        return createCase_(descriptor, error, false);
    });
}

Handle createCase(const std::string& descriptorText, int& error) {
    return handleOperation(TARVO_FUNCTION, error, [&] { return createCase_(CaseDescriptor(descriptorText), error, false); });
}

Handle duplicate(const Handle& handle, const std::string& tag, const std::string& description, int& error) {
    return handleOperation(TARVO_FUNCTION, error, [&] {
        TARVO_LOG_STATIC(1) << "Retrieving " << handle.id() << " from persistent storage database";
        PersistencyPostgres store;
        std::unique_ptr<Model> model(my_cast<Model*>(
            NodeFactory::create(handle.type(), Tarvo::Persistency::Defaults(), handle.id(), &store, nullptr, nullptr),
            TARVO_FUNCTION));
        model->setTag(tag);
        model->setDescription(description);
        TARVO_LOG_STATIC(1) << "Inserting new object into persistent storage database";
        const Handle copy = insertAnnounced(*model, store);
        Handle::Record record{copy.id(), copy.uuid(), copy.type(), copy.tag(), copy.description(), 0, 0, true};
        error = success;
        return Handle(record);
    });
}

int remove(const Handle& handle) {
    try {
        PersistencyPostgres store;
        store.removeObject(handle.id());
        return success;
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        std::cerr << e.message() << std::endl;
        return serverError;
    }
}

int purge() {
    try {
        TARVO_LOG_STATIC(1) << "Clean up persistent storage database";
        PersistencyPostgres store;
        store.purgeAll();
        return success;
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        std::cerr << e.message() << std::endl;
        return serverError;
    }
}

void setVerbosity(int level) { Utility::setVerbosityGlobal(level); }

} // namespace Tarvo::User
