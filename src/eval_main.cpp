#include <tarvo/models/ModelCollection.h>
#include <tarvo/user/Eval.h>
#include <tarvo/user/Kernel.h>

int main(int argc, char** argv) {
    Tarvo::User::setModelCollection(&Tarvo::Models::registerModelCollection);
    return Tarvo::User::evalMain(argc, argv);
}
