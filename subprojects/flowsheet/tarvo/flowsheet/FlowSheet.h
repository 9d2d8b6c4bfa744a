#ifndef TARVO_FLOWSHEET_FLOWSHEET_H
#define TARVO_FLOWSHEET_FLOWSHEET_H

#include <tarvo/core/ObjectiveNleAdFlowsheet.h>
#include <tarvo/flowsheet/SequentialAssembly.h>
#include <tarvo/units/Connectivity.h>
#include <tarvo/utility/SmartEnumerator.h>

#include <list>
#include <memory>
#include <string>

// A unit whose inside is a graph of units and streams, between the two Terminator children "source" and
// "sink". Concrete flowsheets derive from it: they add units and streams and name the cut streams that open
// their recycles. A flowsheet converges its cuts sequentially, by passes over the units and steps of the
// assignments (SequentialConvergence), or simultaneously, as one Newton system of the assignments and the
// objectives of its units and feed streams (SimultaneousConvergence). It is a unit itself, so it can stand in
// another flowsheet: its ports "in<i>" and "out<i>" are copied to and from the internal streams that the
// connections name.
class FlowSheet : public virtual VertexBase,
                  public SequentialAssembly,
                  public ObjectiveNleAdFlowsheet,
                  public Connectivity {
public:
    using CutsSolution = Tarvo::Utility::CutsSolution;

    FlowSheet(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
              Persistent* parent, Persistent* root);
    ~FlowSheet() override;

    // Sequentially on a flowsheet never calculated, then simultaneously where the class supports it.
    void calculate(int level) override;
    void go(SolutionMode mode, int level) override;
    // Hooks around each pass over the units.
    virtual void pre(SolutionMode mode, int level) = 0;
    virtual void post(SolutionMode mode, int level) = 0;
    // One pass over the units in the order of the schedule, between the hooks.
    void pass(SolutionMode mode, int level);
    // The flowsheet's own design equations, through makeAssignment.
    virtual void makeUserEquations(std::list<Assignment*>::iterator& it) = 0;
    // The number of sequential passes that this flowsheet wants at most, beyond the default of 5.
    virtual int sequential() const { return 0; }
    // The passes with which a sequential solve of this flowsheet starts before Newton's method closes its cuts,
    // for a flowsheet whose passes alone converge too slowly; 0, the default, leaves the solve to the passes.
    // A flowsheet whose last solve in this process converged takes one.
    virtual int passesBeforeNewton() const { return 0; }
    virtual bool simultaneousSupported() const { return true; }
    ObjectiveNleAd* objective() override { return this; }
    // One pass over the units, then the residuals of the assignments and of the included objectives.
    int calculateResidualsLocal() override;
    // Gathers the unknowns, once.
    void setup_of() override;
    void initializeNonPersistents() override;
    void setup() override;
    // Checks that edges and vertices agree, each vertex, and that something flows in and out.
    void check() override;
    Tarvo::Utility::Category category() const override { return Tarvo::Utility::Category::flowsheet; }
    // The units and streams, each recycle drawn closed; a flowsheet inside this one is drawn as a unit.
    void printSvg(const char* path, bool tiny, bool raster, int depth) override;
    // What the units inside create or take away.
    Value massBalance() const override;
    Value energyBalance() const override;
    // Whether the assignment at `it` takes part, from enableAssignment.
    bool enabled(std::list<Assignment*>::const_iterator it) const override;

    void addUnit(const std::string& type, Tarvo::Persistency::Defaults defaults);
    void addStream(const std::string& type, Tarvo::Persistency::Defaults defaults, const std::string& from,
                   const std::string& fromPort, const std::string& to, const std::string& toPort);
    // The external port "in<i>" feeds the internal stream, which comes from the source. Connections are not
    // stored: a flowsheet declares them in its constructor, for a new and for a retrieved object alike.
    void setInputConnection(const std::string& internalStream, const std::string& port);
    void setOutputConnection(const std::string& internalStream, const std::string& port);
    int inletIdFromPort(const std::string& port) const;
    int outletIdFromPort(const std::string& port) const;
    const std::string& inletTag(unsigned int index) const;
    const std::string& outletTag(unsigned int index) const;
    int inletConnection(const std::string& tag) const;
    int outletConnection(const std::string& tag) const;
    void printConnections() const;

    // Opens the recycle at stream s: s ends in the sink, and its copy s + "bis" starts at the source and
    // feeds where s did. The convergence drives the copy towards s.
    void addCut(const std::string& s);
    void removeCut(const std::string& s);
    // The cuts of a flowsheet retrieved from the store, and of the flowsheets inside it.
    void restoreCuts();
    void check_inout();
    // Refreshes the assignments from `it` on, or builds them when `it` is at the end: pressure, enthalpy and
    // component flows of each cut, then the user equations.
    void makeSequentialAssembly(std::list<Assignment*>::iterator& it);
    // Inside another flowsheet: the external streams to the internal ones, and back.
    void copyInlets();
    void copyOutlets();
    // Whether this flowsheet stands inside another one.
    bool nested() const;

    IntegerVector enableAssignment{"enableAssignment", "Enable Assignment", 0, 0, this};
    Integer NITER{"NITER", "Number of iterations for flowsheet cuts convergence", -1, this};
    Quantity seqTol{"seqTol", "Tolerance for sequential modular mode", "", this, 1e-6};
    Quantity seqErr{"seqErr", "Current error for sequential modular mode", "", this, 1e-6};

protected:
    // How the sequential passes step the cuts; direct unless a concrete flowsheet asks for another. With
    // newton the sequential passes are left out and the simultaneous solve does the work.
    void setCutsSolution(CutsSolution method) { method_ = method; }
    CutsSolution cutsSolution() const { return method_; }

private:
    class Private;

    CutsSolution method_ = CutsSolution::direct;
    std::unique_ptr<Private> d_;
};

#endif
