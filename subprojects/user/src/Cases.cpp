#include <tarvo/core/Model.h>
#include <tarvo/persistency/NodeFactory.h>
#include <tarvo/persistency/PersistencyPostgres.h>
#include <tarvo/user/Cases.h>
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
    return Handle(record);
}

// Builds, sets up and stores a new case, and with `drawings` writes its pictures into the working folder;
// the model lives only for this call.
Handle createCase_(const CaseDescriptor& descriptor, int& error, bool drawings) {
    TARVO_LOG_STATIC(1) << "Instantiate flowsheet";
    std::unique_ptr<Model> model(my_cast<Model*>(
        NodeFactory::create(descriptor.type(), descriptor, 0, nullptr, nullptr, nullptr), TARVO_FUNCTION));
    TARVO_LOG_STATIC(2) << "Set user inputs";
    for (const auto& [tag, value] : descriptor.quantities()) {
        Value& q = model->Q(tag);
        q.active() = value; // in SI, the units stay those of the item
        q.setInput();
    }
    TARVO_LOG_STATIC(2) << "Set up inputs and cuts";
    model->setup();
    TARVO_LOG_STATIC(1) << "Creation complete";
    model->reportMessages();
    TARVO_LOG_STATIC(1) << "Saving to persistent storage";
    PersistencyPostgres store;
    model->insert(&store);
    TARVO_LOG_STATIC(1) << "Saved to persistent storage";
    const Handle handle = handleOf(*model);
    if (drawings) {
        TARVO_LOG_STATIC(1) << "Dumping all flowheet objects as tiny SVGs";
        std::vector<std::string> names;
        model->printSvgAll(".", true, true, handle.id(), names);
    }
    error = success;
    return handle;
}

// The facade's frame around an operation that makes a handle: failures become -93 and an invalid handle.
template <typename F> Handle handleOperation(const std::string& function, int& error, F operation) {
    try {
        return operation();
    } catch (Error& e) {
        e.append(function);
        std::cerr << e.message() << std::endl;
        error = serverError;
        return failedHandle();
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
        model->insert(&store);
        TARVO_LOG_STATIC(1) << "Saved to persistent storage";
        Handle copy = handleOf(*model);
        Handle::Record record{copy.id(), copy.uuid(), copy.type(), copy.tag(), copy.description(), 0, 0};
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
