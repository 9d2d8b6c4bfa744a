#include <tarvo/core/EdgeBase.h>
#include <tarvo/core/ObjectiveNleAdVertex.h>
#include <tarvo/core/VertexBase.h>
#include <tarvo/flowsheet/TaskGraph.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>
#include <tarvo/utility/Log.h>

#include <boost/graph/depth_first_search.hpp>
#include <boost/graph/strong_components.hpp>

#include <algorithm>
#include <cassert>
#include <chrono>
#include <cfloat>
#include <fstream>
#include <numeric>

namespace {

constexpr int verbosityFile = -3;

Task& taskOf(const Graph::AdjacencyList& g, Graph::GraphVertex v) { return *g[v].vertex; }

// Every task costs the same: the total cost of a graph is its number of vertices.
// Tags may hold < and >, which text in a drawing may not.
std::string xmlText(const std::string& text) {
    std::string out;
    for (char c : text) out += c == '<' ? "&lt;" : c == '>' ? "&gt;" : c == '&' ? "&amp;" : std::string(1, c);
    return out;
}

double totalCost(const Graph::AdjacencyList& g) {
    double cost = 0;
    for (auto [v, end] = boost::vertices(g); v != end; ++v) cost += taskOf(g, *v).cost;
    return cost;
}

} // namespace

void TaskGraph::doSchedule(int level, int nthreads, Node* root) {
    const bool dag = isDag();
    TARVO_LOG(2) << "TaskGraph is DAG ? " << (dag ? "True" : "False");
    if (!dag) {
        findStrongComponents();
        std::vector<EdgeBase*> cuts;
        makeDag_(graph_, cuts);
        addCuts(cuts);
        if (!isDag())
            throw ErrorRunTime(TARVO_FUNCTION, "the flowsheet has a recycle that no cut stream opens: add the cuts "
                                               "proposed in the log");
    }
    TARVO_LOG(2) << "NTHREADS = " << nthreads;
    TARVO_LOG(2) << "NODES = " << vertexCount();
    TARVO_LOG(2) << "ARCS = " << edgeCount();
    TARVO_LOG(2) << "ARCS/NODES = " << double(edgeCount()) / double(vertexCount());
    coreTasks_.assign(nthreads, {});
    running_.assign(nthreads, -1);
    freeAt_.assign(nthreads, 0.0);
    setLevels(root);
    const double total = totalCost(graph_);
    int round = 4;
    bool again;
    do {
        cpMisf(root);
        writeScheduleSvg("tasks" + std::to_string(round) + ".svg");
        writeDot("tasks" + std::to_string(round) + ".dot");
        ++round;
        setLevels(root);
        again = parallelize(level, root);
        const double span = makeSpan();
        TARVO_LOG(2) << "Total cost = " << total;
        TARVO_LOG(2) << "Ideal make span = " << total / nthreads;
        TARVO_LOG(2) << "Make span = " << span;
        TARVO_LOG(2) << "Speedup = " << total / span;
        TARVO_LOG(2) << "Ideal speedup = " << nthreads;
        TARVO_LOG(2) << "Speedup/isIdeal speedup = " << 100.0 * total / span / nthreads << " %";
        again = again && 1.1 * total / nthreads < span && round < 50;
    } while (again);
    scheduled_ = true;
}

void TaskGraph::setLevels(Node*) {
    list_.clear();
    for (auto [v, end] = boost::vertices(graph_); v != end; ++v) {
        list_.push_back(*v);
        taskOf(graph_, *v).level = 0;
    }
    // When a vertex is finished, all its successors are: its level is final, and its predecessors rise above it.
    struct Levels : boost::default_dfs_visitor {
        void finish_vertex(GraphVertex v, const AdjacencyList& g) const {
            for (auto [e, end] = boost::in_edges(v, g); e != end; ++e) {
                Task& u = taskOf(g, boost::source(*e, g));
                if (u.level <= taskOf(g, v).level) u.level = taskOf(g, v).level + 1;
            }
        }
    };
    boost::depth_first_search(graph_, boost::visitor(Levels()));
    writeDot("cpMisf.dot");
    std::sort(list_.begin(), list_.end(),
              [this](GraphVertex a, GraphVertex b) { return taskOf(graph_, a).level > taskOf(graph_, b).level; });
    std::reverse(list_.begin(), list_.end());
}

double TaskGraph::cpMisf(Node*) {
    const int cores = static_cast<int>(coreTasks_.size());
    TARVO_LOG(3) << "Entered with m = " << cores;
    for (auto& tasks : coreTasks_) tasks.clear();
    std::fill(running_.begin(), running_.end(), -1);
    std::fill(freeAt_.begin(), freeAt_.end(), 0.0);
    cores_.clear();
    double t = 0.0;
    // Moves time on to the end of the running task that finishes first, and frees its core.
    auto advance = [&] {
        double step = DBL_MAX;
        for (int c = 0; c < cores; ++c)
            if (running_[c] >= 0) {
                const Task& task = taskOf(graph_, running_[c]);
                step = std::min(step, task.cost - (t - task.start));
            }
        if (step == DBL_MAX) return false;
        for (int c = 0; c < cores; ++c)
            if (running_[c] >= 0) {
                const Task& task = taskOf(graph_, running_[c]);
                if (task.cost - (t - task.start) == step) running_[c] = -1;
            }
        t += step;
        return true;
    };
    while (!list_.empty()) {
        while (!list_.empty() && std::find(running_.begin(), running_.end(), -1) != running_.end()) {
            const GraphVertex v = list_.back();
            double earliest = t;
            bool waiting = false;
            for (auto [e, end] = boost::in_edges(v, graph_); e != end; ++e) {
                const GraphVertex u = boost::source(*e, graph_);
                if (std::find(running_.begin(), running_.end(), static_cast<int>(u)) != running_.end()) waiting = true;
                earliest = std::max(earliest, taskOf(graph_, u).finish);
            }
            if (waiting) break;
            const int processor = static_cast<int>(std::find(running_.begin(), running_.end(), -1) - running_.begin());
            assert(processor >= 0);
            coreTasks_[processor].push_back(v);
            Task& task = taskOf(graph_, v);
            task.processor = processor;
            freeAt_[processor] = task.schedule(std::max(freeAt_[processor], earliest));
            cores_[v] = processor;
            if (freeAt_[processor] > t) running_[processor] = static_cast<int>(v);
            TARVO_LOG(4) << "Scheduled task " << graph_[v].tag << " to process " << processor << " at time = " << task.start;
            list_.pop_back();
        }
        if (!advance()) break;
    }
    while (advance()) {
    }
    return t;
}

double TaskGraph::makeSpan() const {
    const auto q = vertices_.find("sink");
    assert(vertices_.end() != q);
    return taskOf(graph_, q->second).finish;
}

bool TaskGraph::parallelize(int level, Node*) {
    const int cores = static_cast<int>(coreTasks_.size());
    if (level > 0 || cores <= 1) {
        TARVO_LOG(3) << "Done (single core)";
        return false;
    }
    const double limit = 1.01 * totalCost(graph_) / cores;
    GraphEdge proposal;
    bool found = false;
    for (auto it = list_.rbegin(); it != list_.rend() && taskOf(graph_, *it).start < limit; ++it) {
        TARVO_LOG(3) << "Examined task " << graph_[*it].tag << " with level = " << taskOf(graph_, *it).level
                     << " and starting time " << taskOf(graph_, *it).start;
        for (auto [e, end] = boost::in_edges(*it, graph_); e != end; ++e) {
            const std::string& from = graph_[boost::source(*e, graph_)].tag;
            if (from == "source" || graph_[*it].tag == "sink") continue;
            proposal = *e;
            found = true;
        }
    }
    if (found)
        TARVO_LOG(2) << "The suggested arc to tear to enhance parallelization is from "
                     << graph_[boost::source(proposal, graph_)].tag << " to " << graph_[boost::target(proposal, graph_)].tag;
    return found;
}

void TaskGraph::findStrongComponents() {
    std::vector<int> component(vertexCount());
    const int n = boost::strong_components(graph_, boost::make_iterator_property_map(component.begin(), boost::get(boost::vertex_index, graph_)));
    TARVO_LOG(2) << "Total number of strong components: " << n;
    TARVO_LOG(3) << "Vertex partitioning in strong components";
    for (auto [v, end] = boost::vertices(graph_); v != end; ++v)
        TARVO_LOG(3) << graph_[*v].tag << " " << component[*v];
    TARVO_LOG(3) << "Edges partitioning in strong components";
    for (auto [e, end] = boost::edges(graph_); e != end; ++e)
        if (component[boost::source(*e, graph_)] == component[boost::target(*e, graph_)])
            TARVO_LOG(3) << graph_[*e].tag << " " << component[boost::source(*e, graph_)];
}

void TaskGraph::makeDag_(const AdjacencyList& graph, std::vector<EdgeBase*>& cuts) {
    std::vector<int> component(boost::num_vertices(graph));
    const int n = boost::strong_components(graph, boost::make_iterator_property_map(component.begin(), boost::get(boost::vertex_index, graph)));
    for (int c = 0; c < n; ++c) {
        if (std::count(component.begin(), component.end(), c) < 2) continue;
        TARVO_LOG(3) << "Component is non trivial.";
        // A copy with the vertices of the component only.
        AdjacencyList copy;
        std::map<GraphVertex, GraphVertex> inCopy;
        for (auto [v, end] = boost::vertices(graph); v != end; ++v) {
            if (component[*v] == c)
                inCopy[*v] = boost::add_vertex(graph[*v], copy);
            else
                TARVO_LOG(4) << "Removing vertex: " << graph[*v].tag << "  in: " << boost::in_degree(*v, graph)
                             << "  out: " << boost::out_degree(*v, graph);
        }
        for (auto [e, end] = boost::edges(graph); e != end; ++e) {
            const auto s = inCopy.find(boost::source(*e, graph)), t = inCopy.find(boost::target(*e, graph));
            if (s != inCopy.end() && t != inCopy.end()) boost::add_edge(s->second, t->second, graph[*e], copy);
        }
        TARVO_LOG(4) << "Vertex list:";
        for (auto [v, end] = boost::vertices(copy); v != end; ++v) TARVO_LOG(4) << copy[*v].tag;
        TARVO_LOG(4) << "Edge list:";
        for (auto [e, end] = boost::edges(copy); e != end; ++e) TARVO_LOG(4) << copy[*e].tag;
        findCycles_(copy);
        const GraphEdge cut = suggestCut(copy);
        TARVO_LOG(3) << "Select edge " << copy[cut].tag;
        cuts.push_back(copy[cut].edge);
        for (auto [e, end] = boost::edges(graph_); e != end; ++e)
            if (graph_[*e].edge == copy[cut].edge) graph_[*e].weight = copy[cut].weight; // for the log of addCuts
        TARVO_LOG(3) << "Remove edge " << copy[cut].tag;
        boost::remove_edge(cut, copy);
        TARVO_LOG(3) << "Recurse";
        makeDag_(copy, cuts);
    }
}

// The elementary circuits by backtracking from each start vertex over higher-numbered vertices only;
// each circuit adds 1 to the weight of its edges and vertices.
void TaskGraph::findCycles_(AdjacencyList& graph) {
    const std::size_t n = boost::num_vertices(graph);
    for (GraphVertex start = 0; start < n; ++start) {
        TARVO_LOG(4) << "Now looking at cycles starting from vertex " << graph[start].tag;
        std::vector<GraphVertex> points, marked;
        std::vector<bool> mark(n, false);
        backTrack_(graph, start, start, points, marked, mark);
    }
    TARVO_LOG(3) << "Vertex weights:";
    for (auto [v, end] = boost::vertices(graph); v != end; ++v) TARVO_LOG(3) << "weight[" << graph[*v].tag << "] = " << graph[*v].weight;
}

bool TaskGraph::backTrack_(AdjacencyList& graph, GraphVertex start, GraphVertex v, std::vector<GraphVertex>& points,
                           std::vector<GraphVertex>& marked, std::vector<bool>& mark) {
    bool found = false;
    points.push_back(v);
    mark[v] = true;
    marked.push_back(v);
    for (auto [e, end] = boost::out_edges(v, graph); e != end; ++e) {
        const GraphVertex w = boost::target(*e, graph);
        if (w < start) continue;
        if (w == start) {
            found = true;
            for (std::size_t k = 0; k < points.size(); ++k) {
                const GraphVertex from = points[k], to = k + 1 < points.size() ? points[k + 1] : start;
                graph[from].weight += 1;
                const auto [edge, exists] = boost::edge(from, to, graph);
                if (exists) graph[edge].weight += 1;
            }
        } else if (!mark[w] && backTrack_(graph, start, w, points, marked, mark)) {
            found = true;
        }
    }
    if (found) {
        while (marked.back() != v) {
            mark[marked.back()] = false;
            marked.pop_back();
        }
        mark[v] = false;
        marked.pop_back();
    }
    points.pop_back();
    return found;
}

Graph::GraphEdge TaskGraph::suggestCut(const AdjacencyList& graph) {
    TARVO_LOG(3) << "Graph has " << boost::num_vertices(graph) << " vertexes and " << boost::num_edges(graph) << " edges";
    std::vector<float> score(boost::num_vertices(graph));
    auto mean = [&graph](auto range) {
        float sum = 0;
        int n = 0;
        for (auto e = range.first; e != range.second; ++e, ++n) sum += static_cast<float>(graph[*e].weight);
        return n ? sum / n : 0.0f;
    };
    for (auto [v, end] = boost::vertices(graph); v != end; ++v) {
        if (boost::in_degree(*v, graph) == 0)
            score[*v] = 100;
        else if (boost::out_degree(*v, graph) == 0)
            score[*v] = -100;
        else
            score[*v] = mean(boost::in_edges(*v, graph)) - mean(boost::out_edges(*v, graph));
        TARVO_LOG(4) << "vertexordering[" << graph[*v].tag << "] = " << score[*v];
    }
    std::vector<GraphEdge> candidates;
    for (auto [e, end] = boost::edges(graph); e != end; ++e) {
        const GraphVertex s = boost::source(*e, graph), t = boost::target(*e, graph);
        if (score[s] < score[t] || (score[s] == score[t] && t < s)) candidates.push_back(*e);
    }
    if (candidates.empty()) return *boost::edges(graph).first;
    std::stable_sort(candidates.begin(), candidates.end(),
                     [&graph](const GraphEdge& a, const GraphEdge& b) { return graph[a].weight < graph[b].weight; });
    return candidates.back();
}

void TaskGraph::addCuts(const std::vector<EdgeBase*>& cuts) {
    for (EdgeBase* edge : cuts) {
        int weight = 0;
        for (auto [e, end] = boost::edges(graph_); e != end; ++e)
            if (graph_[*e].edge == edge) weight = graph_[*e].weight;
        TARVO_LOG(2) << "Cutting stream: " << edge->tag() << " with weight = " << weight;
    }
}

void TaskGraph::setLocks_(int core) {
    for (GraphVertex v : coreTasks_[core])
        for (auto [e, end] = boost::out_edges(v, graph_); e != end; ++e) {
            TARVO_LOG(5) << "Processing task " << graph_[v].tag << " to run on core " << core << "  edge " << graph_[*e].tag;
            omp_init_lock(&graph_[*e].edge->lock);
            omp_set_lock(&graph_[*e].edge->lock);
        }
}

void TaskGraph::singlePass(Calculatable::SolutionMode mode, int level) {
    if (level > 0) {
        coreSinglePass(0, mode, level);
        return;
    }
    TARVO_LOG(4) << "=== set up locks";
    for (int core = 0; core < static_cast<int>(coreTasks_.size()); ++core) setLocks_(core);
    TARVO_LOG(4) << "=== synch all threads";
    TARVO_LOG(4) << "=== start actual computation";
    for (int core = 0; core < static_cast<int>(coreTasks_.size()); ++core) coreSinglePass(core, mode, 0);
}

void TaskGraph::coreSinglePass(int core, Calculatable::SolutionMode mode, int level) {
    for (GraphVertex v : coreTasks_[core]) {
        if (level == 0)
            for (auto [e, end] = boost::in_edges(v, graph_); e != end; ++e) {
                omp_set_lock(&graph_[*e].edge->lock);
                omp_unset_lock(&graph_[*e].edge->lock);
            }
        VertexBase& vertex = *graph_[v].vertex;
        const auto started = std::chrono::steady_clock::now();
        if (mode != Calculatable::onePass) {
            vertex.go(mode, level + 1);
            vertex.setDuration(std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count());
        } else if (auto* objective = dynamic_cast<ObjectiveNleAdVertex*>(&vertex)) {
            objective->calculateResidualsLocal();
        } else {
            vertex.go(Calculatable::simultaneous, level + 1);
        }
        vertex.checkBalance();
        if (level == 0)
            for (auto [e, end] = boost::out_edges(v, graph_); e != end; ++e) omp_unset_lock(&graph_[*e].edge->lock);
    }
}

std::vector<VertexBase*> TaskGraph::order(int core) const {
    std::vector<VertexBase*> units;
    for (GraphVertex v : coreTasks_.at(core)) units.push_back(graph_[v].vertex);
    return units;
}

void TaskGraph::writeScheduleSvg(const std::string& file) const {
    constexpr double unit = 60, row = 30;
    std::ofstream out(file);
    double span = 1.0;
    for (const auto& tasks : coreTasks_)
        for (GraphVertex v : tasks) span = std::max(span, taskOf(graph_, v).finish);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\""
        << span * unit + 20 << "\" height=\"" << coreTasks_.size() * row + 20 << "\">\n";
    int id = 0;
    for (std::size_t core = 0; core < coreTasks_.size(); ++core)
        for (GraphVertex v : coreTasks_[core]) {
            const Task& task = taskOf(graph_, v);
            out << "  <g id=\"task" << id << "\"><rect x=\"" << 10 + task.start * unit << "\" y=\"" << 10 + core * row
                << "\" width=\"" << task.cost * unit << "\" height=\"" << row - 4 << "\" fill=\""
                << (id % 2 ? "#DDDDDD" : "#888888") << "\" stroke=\"black\"/><text x=\"" << 12 + task.start * unit
                << "\" y=\"" << 10 + core * row + row / 2 << "\" font-family=\"Arial\" font-size=\"12px\">"
                << xmlText(graph_[v].tag) << "</text></g>\n";
            ++id;
        }
    out << "</svg>\n";
}
