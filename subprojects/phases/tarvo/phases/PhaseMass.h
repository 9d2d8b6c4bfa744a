#ifndef TARVO_PHASES_PHASEMASS_H
#define TARVO_PHASES_PHASEMASS_H

#include <tarvo/core/Model.h>
#include <tarvo/utility/SmartEnumerator.h>

#include <string>

namespace Phase {

// A phase as a mass balance: the flow of each component and the composition by mass. The classes
// derived from it add the molar side and the properties. A phase keeps its numbers consistent only
// after a balance (calculateX) has run; the presets and the flow arithmetic leave that to the caller.
class Mass : public Model {
public:
    using Mode = Tarvo::Utility::MassBalanceMode;

    Mass(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
         Persistent* root);
    // Copies the values of the items. The implicit member-wise copy would copy the tables of item
    // pointers too, and leave this phase's tables pointing into the other one.
    Mass& operator=(const Mass& other) {
        Object::operator=(static_cast<const Node&>(other));
        return *this;
    }

    Tarvo::Utility::Category category() const override { return Tarvo::Utility::Category::phase; }
    // Runs the balance of representation().
    void calculate(int level) override;
    void setup() override {}
    void initializeNonPersistents() override {}
    ObjectiveNleAd* objective() override { return nullptr; }

    // Balance with mdot and w given.
    virtual void calculateMw_();
    // Balance with mdotcomps given.
    virtual void calculateM_();
    virtual void setType(Tarvo::Utility::PhaseType type) { type_ = static_cast<int>(type); }
    Tarvo::Utility::PhaseType phaseType() const { return static_cast<Tarvo::Utility::PhaseType>(type_); }
    // The balance that the phase keeps by nature: Mw here, Nx from the molar phases on.
    virtual int representation() const { return static_cast<int>(Mode::Mw); }
    virtual Value& totalFlow() { return mdot; }
    const Value& totalFlow() const { return const_cast<Mass*>(this)->totalFlow(); }
    virtual Value& flow(int i) { return mdotcomps[i]; }
    virtual const Value& flow(int i) const { return mdotcomps[i]; }
    virtual Value& frac(int i) { return w[i]; }
    const Value& frac(int i) const { return const_cast<Mass*>(this)->frac(i); }
    virtual QuantityVector& fracs() { return w; }
    // Properties at (P, T); a phase without a thermodynamic model has none.
    virtual void calculateProperties(const Value& /*P*/, const Value& /*T*/, bool /*writeH*/) {}
    virtual void calculateX(const Mode& mode);

    // Presets of composition: each writes the fractions or the flows that `mode` names, without a balance.
    virtual void setEquimolar(const Mode& mode);
    virtual void setEquimass(const Mode& mode);
    virtual void setPure(const Mode& mode, int i);
    virtual void setImpure(const Mode& mode, int i, double f);
    virtual void setEquimolarNoKey(const Mode& mode, int key);
    virtual void setEquimassNoKey(const Mode& mode, int key);
    virtual bool isPure() const;
    virtual void clearComposition(const Mode& mode);
    // Symmetric composition peaked in the middle, with its smallest entries close to f.
    void setSymmetrical(const Mode& mode, double f);
    // Monotonic composition whose smallest entry is f, rising with the index if ascending.
    void setAsymmetrical(const Mode& mode, bool ascending, double f);

    virtual Mass& operator+=(const Mass& rhs);
    virtual Mass& operator-=(const Mass& rhs);
    virtual Mass& operator*=(const Value& factor);
    // Adds (subtracts) the flows of components first to last - 1 of rhs, with no balance.
    Mass& addComponents(const Mass& rhs, int first, int last);
    Mass& subtractComponents(const Mass& rhs, int first, int last);

    Quantity fraction{"fraction", "phase fraction", "", this, 1.0};
    Quantity mdot{"mdot", "mass flow", "kg/h", this, 10000.0};
    QuantityVector w;
    QuantityVector mdotcomps;

    // The vector of fractions or of flows that a preset in `mode` writes, and whether it is on a molar
    // basis; a mode that the class does not balance raises the massbalance error.
    struct Target {
        QuantityVector* values;
        bool molar;
        bool flows;
    };

protected:
    // `signature` here and below is the caller's __PRETTY_FUNCTION__: it is shortened to the function's
    // name only on the way to an error, so that the checks cost no string on the paths of a flash.
    virtual Target presetTarget(const Mode& mode, const char* signature);
    // The error for a balance mode that an operation does not support.
    [[noreturn]] static void unsupportedMode(const char* signature, const Mode& mode);
    // Raises "No components defined" when the component list is empty.
    static void requireComponents(const char* signature);
    // Divides the entries by their sum, unless the sum is 0.
    static void normalize(QuantityVector& fractions);
    // fractions[i] = flows[i] / total, all 0 when the total is 0.
    static void fractionsOf(const QuantityVector& flows, const Value& total, QuantityVector& fractions);

private:
    int type_ = 0;
};

// N for the molar modes, M for the mass modes: the balance on flows alone that keeps a phase's
// present amounts.
Tarvo::Utility::MassBalanceMode flowonly(const Tarvo::Utility::MassBalanceMode& mode);

} // namespace Phase

#endif
