#ifndef TARVO_CORE_TASK_H
#define TARVO_CORE_TASK_H

// The scheduling data of a unit in the task graph of its flowsheet. Every task costs 1, so a schedule's
// make span on one core is the number of units.
class Task {
public:
    double cost = 1.0;
    int level = 0; // the length of the longest path to a unit without successors
    int processor = 0;
    double start = 0.0;
    double finish = 0.0;

    // Schedules the task at time t; gives back its finish.
    double schedule(double t) {
        start = t;
        finish = t + cost;
        return finish;
    }
};

#endif
