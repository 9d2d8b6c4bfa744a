// This build's command line, working on the store named by the configuration file in
// TARVO_TEST_CONFIGURATION: the tests' own database.
#include <tarvo/models/ModelCollection.h>
#include <tarvo/persistency/Configuration.h>
#include <tarvo/user/Kernel.h>
#include <tarvo/user/main.h>

#include <cstdlib>

int main(int argc, char** argv) {
    if (const char* file = std::getenv("TARVO_TEST_CONFIGURATION")) Configuration::useKernelFile(file);
    Tarvo::User::setModelCollection(&Tarvo::Models::registerModelCollection);
    return Tarvo::User::main(argc, argv);
}
