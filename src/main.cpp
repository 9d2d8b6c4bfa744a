#include <tarvo/models/ModelCollection.h>
#include <tarvo/user/Kernel.h>
#include <tarvo/user/main.h>

int main(int argc, char** argv) {
    Tarvo::User::setModelCollection(&Tarvo::Models::registerModelCollection);
    return Tarvo::User::main(argc, argv);
}
