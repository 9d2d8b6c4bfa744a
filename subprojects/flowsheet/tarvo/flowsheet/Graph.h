#ifndef TARVO_FLOWSHEET_GRAPH_H
#define TARVO_FLOWSHEET_GRAPH_H

#include <tarvo/utility/Diagnostic.h>

#include <boost/graph/adjacency_list.hpp>

#include <map>
#include <string>

class VertexBase;
class EdgeBase;

// The directed graph of a flowsheet: units are vertices, streams are edges. Out- and in-edges of a vertex
// are ordered, and two streams between the same units are two edges.
class Graph : public virtual Diagnostic {
public:
    struct VertexData {
        VertexBase* vertex = nullptr;
        std::string tag;
        double weight = 0; // circuits through the vertex, counted by the cycle search
    };
    struct EdgeData {
        EdgeBase* edge = nullptr;
        std::string tag;
        int weight = 0; // circuits through the edge, counted by the cycle search
    };
    using AdjacencyList = boost::adjacency_list<boost::multisetS, boost::vecS, boost::bidirectionalS, VertexData, EdgeData>;
    using GraphVertex = boost::graph_traits<AdjacencyList>::vertex_descriptor;
    using GraphEdge = boost::graph_traits<AdjacencyList>::edge_descriptor;

    void addVertex(VertexBase* vertex);
    // from and to are tags of vertices added before.
    void addEdge(const std::string& from, const std::string& to, EdgeBase* edge);
    void removeEdge(const std::string& tag);
    void removeEdge(const std::string& from, const std::string& to);
    // Turns the edge of that tag round.
    void revertEdge(const std::string& tag);
    bool isDag() const;
    // The graph in DOT; each vertex filled with the colour of its core when colours are given.
    void writeDot(const std::string& file) const;
    std::size_t vertexCount() const { return boost::num_vertices(graph_); }
    std::size_t edgeCount() const { return boost::num_edges(graph_); }
    const AdjacencyList& adjacency() const { return graph_; }
    GraphVertex vertexOf(const std::string& tag) const;

protected:
    AdjacencyList graph_;
    std::map<std::string, GraphVertex> vertices_;
    std::map<GraphVertex, int> cores_; // the core of each scheduled vertex, for the colours of drawings

private:
    bool findEdge(const std::string& tag, GraphEdge& found) const;
};

#endif
