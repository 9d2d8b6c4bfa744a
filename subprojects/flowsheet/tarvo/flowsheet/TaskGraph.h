#ifndef TARVO_FLOWSHEET_TASKGRAPH_H
#define TARVO_FLOWSHEET_TASKGRAPH_H

#include <tarvo/core/Calculatable.h>
#include <tarvo/flowsheet/Graph.h>

#include <string>
#include <vector>

class Node;

// The order in which a flowsheet calculates its units, and one pass over them. Units run by descending
// level, the length of the longest path to a unit without successors, so that every producer runs before
// its consumers. The schedule is made for a given number of cores; the kernel asks for one and has no
// threads, so the locks of the streams are bookkeeping that shows a wrong order as a deadlock line.
class TaskGraph : public Graph {
public:
    // Makes the schedule, once per flowsheet. A graph with a cycle that no cut stream opens gets cuts
    // proposed in the log and is refused.
    void doSchedule(int level, int nthreads, Node* root);
    bool scheduled() const { return scheduled_; }
    // Runs every unit once, in the order of the schedule.
    void singlePass(Calculatable::SolutionMode mode, int level);
    void coreSinglePass(int core, Calculatable::SolutionMode mode, int level);

    void setLevels(Node* root);
    // The list schedule, critical path first; gives the make span.
    double cpMisf(Node* root);
    // Proposes in the log an edge whose cut would shorten the schedule; gives whether it found one.
    bool parallelize(int level, Node* root);
    // The finish of the vertex "sink".
    double makeSpan() const;
    void findStrongComponents();
    // Logs each proposed cut with its weight.
    void addCuts(const std::vector<EdgeBase*>& cuts);

    // The units of a core, in the order in which they run.
    std::vector<VertexBase*> order(int core = 0) const;

private:
    // Gathers proposed cuts until the graph has no cycle: by strong components, circuits and scores.
    void makeDag_(const AdjacencyList& graph, std::vector<EdgeBase*>& cuts);
    void findCycles_(AdjacencyList& graph);
    bool backTrack_(AdjacencyList& graph, GraphVertex start, GraphVertex v, std::vector<GraphVertex>& points,
                    std::vector<GraphVertex>& marked, std::vector<bool>& mark);
    GraphEdge suggestCut(const AdjacencyList& graph);
    void setLocks_(int core);
    void writeScheduleSvg(const std::string& file) const;

    std::vector<GraphVertex> list_; // what remains to be scheduled, highest level at the end
    std::vector<std::vector<GraphVertex>> coreTasks_;
    std::vector<int> running_;
    std::vector<double> freeAt_;
    bool scheduled_ = false;
};

#endif
