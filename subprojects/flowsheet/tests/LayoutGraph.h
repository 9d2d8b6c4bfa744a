#ifndef TARVO_FLOWSHEET_TESTS_LAYOUTGRAPH_H
#define TARVO_FLOWSHEET_TESTS_LAYOUTGRAPH_H

#include <tarvo/core/EdgeBase.h>
#include <tarvo/core/VertexBase.h>
#include <tarvo/flowsheet/Graph.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

// A flowsheet's graph made by hand for drawings: units with icons of a given size, and streams between
// named ports. Ports listed in `sides` sit where the list says; the others where a vertex puts them. A unit's
// type holds angle brackets, as the names of template models do, which the drawings have to escape.
class LayoutUnit : public VertexBase {
public:
    LayoutUnit(const std::string& tag, const std::string& icon, double width, double height,
               std::map<std::string, PortLocation> sides)
        : Model({tag, ""}, 0, nullptr, nullptr, nullptr), VertexBase({tag, ""}, 0, nullptr, nullptr, nullptr),
          type_("LayoutUnit<" + icon + ">"), sides_(std::move(sides)) {
        setIcon(icon, width, height);
    }
    const std::string& type() const override { return type_; }
    void go(SolutionMode, int) override {}
    void check() override {}
    void calculateBalance() override {}
    void calculate(int) override {}
    void setup() override {}
    void initializeNonPersistents() override {}
    ObjectiveNleAd* objective() override { return nullptr; }
    PortLocation portLocation(const std::string& port) const override {
        const auto side = sides_.find(port);
        return side == sides_.end() ? VertexBase::portLocation(port) : side->second;
    }

private:
    std::string type_;
    std::map<std::string, PortLocation> sides_;
};

class LayoutStream : public EdgeBase {
public:
    explicit LayoutStream(const std::string& tag)
        : Model({tag, ""}, 0, nullptr, nullptr, nullptr), EdgeBase({tag, ""}, 0, nullptr, nullptr, nullptr) {}
    void go(SolutionMode, int) override {}
    void calculate(int) override {}
    void setup() override {}
    void initializeNonPersistents() override {}
    ObjectiveNleAd* objective() override { return nullptr; }
};

// Needs the kernel started: a vertex can not exist without components.
class LayoutGraph {
public:
    LayoutGraph() {
        unit("source", "source", 0.0, 0.0);
        unit("sink", "sink", 0.0, 0.0);
    }
    void unit(const std::string& tag, const std::string& icon, double width, double height,
              std::map<std::string, VertexBase::PortLocation> sides = {}) {
        units_[tag] = std::make_unique<LayoutUnit>(tag, icon, width, height, std::move(sides));
        graph_.addVertex(units_[tag].get());
    }
    void stream(const std::string& tag, const std::string& from, std::string fromPort, const std::string& to,
                std::string toPort) {
        streams_.push_back(std::make_unique<LayoutStream>(tag));
        units_.at(from)->attach(*streams_.back(), fromPort);
        units_.at(to)->attach(*streams_.back(), toPort);
        graph_.addEdge(from, to, streams_.back().get());
    }
    const Graph& graph() const { return graph_; }

private:
    std::map<std::string, std::unique_ptr<LayoutUnit>> units_;
    std::vector<std::unique_ptr<LayoutStream>> streams_;
    Graph graph_;
};

#endif
