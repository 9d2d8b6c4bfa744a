#include <tarvo/core/EdgeBase.h>
#include <tarvo/core/VertexBase.h>
#include <tarvo/flowsheet/Graph.h>
#include <tarvo/utility/Error.h>
#include <tarvo/utility/FunctionName.h>

#include <boost/graph/topological_sort.hpp>

#include <fstream>
#include <iterator>
#include <vector>

namespace {
const char* const coreColours[] = {"lightgray", "lightpink", "khaki", "orange", "yellow", "green", "cyan", "blue", "lightblue", "violet"};
} // namespace

void Graph::addVertex(VertexBase* vertex) {
    const std::string tag = vertex->tag();
    vertices_[tag] = boost::add_vertex(VertexData{vertex, tag, 0}, graph_);
}

Graph::GraphVertex Graph::vertexOf(const std::string& tag) const {
    const auto it = vertices_.find(tag);
    if (it == vertices_.end()) throw ErrorRunTime(TARVO_FUNCTION, "vertex " + tag + " not in the graph");
    return it->second;
}

void Graph::addEdge(const std::string& from, const std::string& to, EdgeBase* edge) {
    boost::add_edge(vertexOf(from), vertexOf(to), EdgeData{edge, edge->tag(), 0}, graph_);
}

bool Graph::findEdge(const std::string& tag, GraphEdge& found) const {
    for (auto [e, end] = boost::edges(graph_); e != end; ++e)
        if (graph_[*e].tag == tag) {
            found = *e;
            return true;
        }
    return false;
}

void Graph::removeEdge(const std::string& tag) {
    GraphEdge e;
    if (findEdge(tag, e)) boost::remove_edge(e, graph_);
}

void Graph::removeEdge(const std::string& from, const std::string& to) {
    boost::remove_edge(vertexOf(from), vertexOf(to), graph_);
}

void Graph::revertEdge(const std::string& tag) {
    GraphEdge e;
    if (!findEdge(tag, e)) return;
    const EdgeData data = graph_[e];
    const GraphVertex s = boost::source(e, graph_), t = boost::target(e, graph_);
    boost::remove_edge(e, graph_);
    boost::add_edge(t, s, data, graph_);
}

bool Graph::isDag() const {
    std::vector<GraphVertex> order;
    try {
        boost::topological_sort(graph_, std::back_inserter(order));
    } catch (const boost::not_a_dag&) {
        return false;
    }
    return true;
}

void Graph::writeDot(const std::string& file) const {
    std::ofstream out(file);
    out << "digraph Q {\n  rankdir = TB;\n";
    for (auto [v, end] = boost::vertices(graph_); v != end; ++v) {
        const auto core = cores_.find(*v);
        out << "  \"" << graph_[*v].tag << "\" [style=filled,color=" << coreColours[core == cores_.end() ? 0 : core->second % 10]
            << "];\n";
    }
    for (auto [e, end] = boost::edges(graph_); e != end; ++e)
        out << "  \"" << graph_[boost::source(*e, graph_)].tag << "\" -> \"" << graph_[boost::target(*e, graph_)].tag
            << "\";\n";
    out << "}\n";
}
