#ifndef TARVO_CORE_PRECEDENCE_H
#define TARVO_CORE_PRECEDENCE_H

// The scheduling data of a stream in the task graph: the lock that stands for its data not being ready.
using omp_lock_t = int;

class Precedence {
public:
    omp_lock_t lock = 0;
};

// Locks of the task graph. The kernel has no threads: these are bookkeeping, and a lock set twice shows
// a unit that ran before the producer of its inlet ("!!!!!!!!!!!! DEADLOCK on lock <id>").
void omp_init_lock(omp_lock_t* lock);
void omp_set_lock(omp_lock_t* lock);
void omp_unset_lock(omp_lock_t* lock);

#endif
