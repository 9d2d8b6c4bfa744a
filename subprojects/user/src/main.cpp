#include <tarvo/core/HomotopyInputXml.h>
#include <tarvo/core/ReplacedFile.h>
#include <tarvo/core/SensitivityInputXml.h>
#include <tarvo/user/Case.h>
#include <tarvo/user/Cases.h>
#include <tarvo/user/Catalogue.h>
#include <tarvo/user/Kernel.h>
#include <tarvo/user/ResultCodes.h>
#include <tarvo/user/main.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/IdFile.h>
#include <tarvo/utility/WholeInteger.h>

#include <cassert>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <iostream>
#include <optional>
#include <string>

namespace Tarvo::User {

namespace {

// The words of one invocation: argv[1] is the command, n the number of words behind the program name.
struct Words {
    int n;
    char** argv;
    const char* word(int i) const { return argv[i]; }
};

// The usage text; `reason`, when given, names the word that was wrong on the line after the echo.
[[noreturn]] void usage(const Words& w, const std::string& reason = "") {
    std::string line = w.argv[0];
    for (int i = 1; i <= w.n; ++i) line += std::string(" ") + w.argv[i];
    std::cerr << "Incorrect command line parameters: " << line << "\n";
    if (!reason.empty()) std::cerr << reason << "\n";
    std::cerr << "Correct synthax command line parameters are:\n"
                 "  calculate id       : retrieve, calculate and update the object at id\n"
                 "  duplicate id ta de : retrieve the object at id and save it with tag ta and and description de\n"
                 "  enumerators        : list supported enumerators\n"
                 "  homotopy id        : perform homotopy run of case id\n"
                 "  new ty ta de '{\"stringOptions\":{\"a\":\"b\",\"c\":\"d\",\"e\":\"f\"},\"integerOptions\":{\"g\":1,\"h\":2}}'\n"
                 "                     : create a new object of type ty with tag ta and description de and the "
                 "supplied options\n"
                 "  purge              : clean up completely the persistent storage database\n"
                 "  remove id          : retrieve and remove the object at id\n"
                 "  sensitivity id     : perform sensitivity run of case id\n"
                 "  txt id             : retrieve the object at id and recursively print all Q, S and I to id.txt "
                 "file\n"
                 "  types              : list supported types\n"
                 "  xml id dir         : retrieve the object at id and recursively print all Q, S and I to xml "
                 "files in the directory dir\n";
    quit(-1);
}

[[noreturn]] void printTypes(const Words&) {
    int error = 0;
    const std::string text = types(error);
    assert(error == 0);
    std::cout << text << std::endl;
    quit(0);
}

[[noreturn]] void printEnumerators(const Words&) {
    int error = 0;
    const std::string text = enumerators(error);
    assert(error == 0);
    std::cout << text << std::endl;
    quit(0);
}

// The id of a command: 0 when the second word is missing, else that whole word as an integer from 0 up.
int idOf(const Words& w) {
    if (w.n < 2) return 0;
    const std::optional<int> id = Utility::wholeInteger(w.word(2));
    if (!id || *id < 0)
        usage(w, std::string("The id ") + w.word(2) + " is not an integer from 0 to 2147483647");
    return *id;
}

// The stored case that the second word names. An object inside a case is refused: a command on it would
// cut the case apart or treat a part as a whole. An unknown id passes, for each command to fail on it.
Handle caseHandle(const Words& w) {
    const int id = idOf(w);
    Handle handle(id);
    // Trying again would only wait out the connection timeout a second time.
    if (!handle.storeReached()) quit(serverError);
    if (handle.valid() && !handle.isCaseRoot()) {
        std::cerr << "Object " << id << " is a " << handle.type() << " inside a case, not the root of one\n";
        quit(invalidArgument);
    }
    return handle;
}

[[noreturn]] void newCase(const Words& w) {
    const std::string type = w.n >= 2 ? w.word(2) : kernelDescriptor().defaultType;
    const std::string tag = w.n >= 3 ? w.word(3) : type;
    const std::string description = w.n >= 4 ? w.word(4) : "";
    const std::string options = w.n >= 5 ? w.word(5) : "";
    int error = 0;
    const Handle handle = createCase(type, tag, description, options, error);
    quit(error ? error : handle.id());
}

[[noreturn]] void calculate(const Words& w) {
    const Handle handle = caseHandle(w);
    const int id = handle.id();
    Case c{handle};
    if (std::strncmp(w.word(1), "calculatetest", 13) == 0) c.setTest();
    if (std::strncmp(w.word(1), "calculatecheck", 14) == 0) c.setCheck();
    // The spreadsheet report follows every calculation, failed ones included; its own failure leaves the
    // result alone. Its document is made while the server writes the results, once the calculation gets there.
    c.setWhileStoring([&c] { c.prepareOds(); });
    const int result = c.calculateSync();
    c.exportOds("content.xml");
    quit(result >= 0 ? id : result);
}

[[noreturn]] void check(const Words& w) {
    const Handle handle = caseHandle(w);
    const int id = handle.id();
    Case c{handle};
    const int result = c.check();
    quit(result < 0 ? result : id);
}

[[noreturn]] void duplicateCase(const Words& w) {
    const std::string tag = w.n >= 3 ? w.word(3) : kernelDescriptor().defaultType;
    const std::string description = w.n >= 4 ? w.word(4) : "";
    int error = 0;
    const Handle copy = duplicate(caseHandle(w), tag, description, error);
    quit(error ? error : copy.id());
}

// Removing nothing is a failure too: the caller asked for a case that is not there.
[[noreturn]] void removeCase(const Words& w) {
    const Handle handle = caseHandle(w);
    quit(handle.valid() ? remove(handle) : invalidArgument);
}

[[noreturn]] void purgeStore(const Words&) { quit(purge()); }

// The report goes to the third word, or to the id as written; ".txt" is added to a name without it.
[[noreturn]] void textReport(const Words& w) {
    std::string target = w.n >= 3 ? w.word(3) : w.word(2);
    if (target.find(".txt") == std::string::npos) target += ".txt";
    Case c{caseHandle(w)};
    quit(c.exportTxt(target));
}

[[noreturn]] void xmlReport(const Words& w) {
    Case c{caseHandle(w)};
    quit(c.exportXml(w.word(3)));
}

// The input file of a study in the working directory; one that cannot be read is refused input.
template <typename Input> Input studyInput(const char* file) {
    try {
        return Input(file);
    } catch (Error& e) {
        e.append(TARVO_FUNCTION);
        std::cerr << e.message() << std::endl;
        quit(invalidArgument);
    }
}

// The results go to "SensitivityResults.xml" whatever the run's end, as far as it came.
[[noreturn]] void sensitivity(const Words& w) {
    const Handle handle = caseHandle(w);
    const int id = handle.id();
    Case c{handle};
    const SensitivityInputXml input = studyInput<SensitivityInputXml>("SensitivityInput.xml");
    int error = 0;
    const SensitivityResult result = c.sensitivitySync(input, error);
    if (!Core::replaceFile("SensitivityResults.xml", [&](std::ostream& out) { result.printXml(out); }))
        std::cerr << "can not write to SensitivityResults.xml" << std::endl;
    quit(error < 0 ? error : id);
}

[[noreturn]] void homotopy(const Words& w) {
    const Handle handle = caseHandle(w);
    const int id = handle.id();
    Case c{handle};
    const int result = c.homotopySync(studyInput<HomotopyInputXml>("Homotopy.xml"));
    quit(result < 0 ? result : id);
}

struct Command {
    const char* literal;
    int minWords;
    int maxWords;
    void (*run)(const Words&);
    // Words that destroy stored cases must be written out; a slip of the keyboard must not empty the store.
    bool wholeWord = false;

    bool matches(const char* word) const {
        return wholeWord ? std::strcmp(word, literal) == 0 : std::strncmp(word, literal, std::strlen(literal)) == 0;
    }
};

// Tried in this order; a word matches a command when it begins with the command's literal.
const Command commands[] = {
    {"calculate", 1, 2, calculate},          {"check", 1, 2, check},
    {"duplicate", 1, 4, duplicateCase},      {"homotopy", 1, 2, homotopy},
    {"new", 1, 5, newCase},                  {"purge", 1, 1, purgeStore, true},
    {"remove", 2, 2, removeCase, true},      {"sensitivity", 1, 2, sensitivity},
    {"txt", 2, 3, textReport},               {"xml", 3, 3, xmlReport},
    {"enumerators", 1, 1, printEnumerators}, {"types", 1, 1, printTypes},
};

// Until the command ends, "id.txt" says that it did not: a process that aborts or is killed leaves this
// code behind, never the result of the command before it.
void markUnfinished() {
    try {
        Utility::setIdFile(unfinished);
    } catch (const Error& e) {
        std::cerr << e.message() << std::endl;
        std::exit(unfinished);
    }
}

} // namespace

void quit(int status) {
    finalizeKernel();
    try {
        Utility::setIdFile(status);
    } catch (const Error& e) {
        std::cerr << e.message() << std::endl;
    }
    std::exit(status < 0 ? status : 0);
}

int main(int argc, char** argv) {
    markUnfinished();
    initializeKernel();
    const Words w{argc - 1, argv};
    if (w.n >= 1) {
        for (const Command& command : commands) {
            if (w.n < command.minWords || w.n > command.maxWords || !command.matches(w.word(1))) continue;
            try {
                command.run(w);
            } catch (const Error& e) {
                // The facade catches what it knows; anything that still gets here ends the command cleanly.
                std::cerr << e.message() << std::endl;
                quit(serverError);
            } catch (const std::exception& e) {
                std::cerr << "Unexpected failure: " << e.what() << std::endl;
                quit(serverError);
            }
        }
    }
    usage(w);
}

} // namespace Tarvo::User
