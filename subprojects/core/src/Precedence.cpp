#include <tarvo/core/Precedence.h>

#include <cassert>
#include <cstdio>
#include <vector>

namespace {

constexpr int MAXLOCKS = 100000000;
int lockcount = 0;
// Bits of the locks handed out so far; it grows with the count, not to MAXLOCKS at once.
std::vector<bool> locks;

} // namespace

void omp_init_lock(omp_lock_t* lock) {
    assert(lockcount < MAXLOCKS);
    *lock = lockcount++;
    if (static_cast<int>(locks.size()) <= *lock) locks.resize(*lock + 1);
    locks[*lock] = false;
}

void omp_set_lock(omp_lock_t* lock) {
    if (locks.at(*lock)) {
        std::printf("!!!!!!!!!!!! DEADLOCK on lock %d\n", *lock);
        std::fflush(stdout);
        return;
    }
    locks[*lock] = true;
}

void omp_unset_lock(omp_lock_t* lock) { locks.at(*lock) = false; }
