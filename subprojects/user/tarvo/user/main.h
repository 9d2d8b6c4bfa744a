#ifndef TARVO_USER_MAIN_H
#define TARVO_USER_MAIN_H

namespace Tarvo::User {

// The command line of the kernel: one operation on the store per process. Every path ends in quit().
int main(int argc, char** argv);

// Undoes the kernel's initialisation, writes `status` into "id.txt" in the working directory and
// exits: with `status` when it is negative, with 0 otherwise.
[[noreturn]] void quit(int status);

} // namespace Tarvo::User

#endif
