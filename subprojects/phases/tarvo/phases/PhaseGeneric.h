#ifndef TARVO_PHASES_PHASEGENERIC_H
#define TARVO_PHASES_PHASEGENERIC_H

#include <tarvo/components/ListComponents.h>
#include <tarvo/phases/PhaseGenericInterface.h>
#include <tarvo/phases/PhaseMassMolarProperties.h>
#include <tarvo/phases/PhaseSimple.h>

#include <memory>

namespace Phase {

// A phase with a thermodynamic model: the persistent side passes its pressure, temperature and molar
// fractions to the model and stores the answers.
class Generic : public MassMolarProperties {
public:
    using Interface = GenericInterface;

    // Takes ownership of the model; held by a unique_ptr from the start, so that it is freed if the
    // construction of the phase fails.
    Generic(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency, Persistent* parent,
            Persistent* root, std::unique_ptr<Interface> model);

    const Value& calculate_P(const Value& a, const Value& b) override;
    const Value& calculate_rho(const Value& P, const Value& T) override;
    const Value& calculate_H(const Value& P, const Value& T) override;
    const Value& calculate_Cp(const Value& P, const Value& T) override;
    const Value& calculate_S(const Value& P, const Value& T) override;
    bool propertiesOfStateAlone() const override { return model_->propertiesOfStateAlone(); }
    Value mu(const Value& P, const Value& T) override;
    Value kappa(const Value& P, const Value& T) override;
    Value sigma(const Value& P, const Value& T) override;
    const Value& fugacity(int i) override;
    void prepare(const Value& T);
    void preparefugacity(const Value& P, const Value& T);
    // The model's ln phi in plain numbers for the composition x, where it has them (see GenericInterface).
    bool lnPhiInNumbers(double P, double T, const std::vector<double>& x, std::vector<double>& lnphi) const {
        return model_->lnPhiInNumbers(P, T, x, lnphi);
    }
    void setType(Tarvo::Utility::PhaseType type) override;

    Interface& model() const { return *model_; }

protected:
    std::unique_ptr<Interface> model_;

private:
    // The molar fractions, once the component list is known not to be empty; `signature` names the caller
    // in the error.
    const Vector& composition_(const char* signature) const;
    Value sumOfFractions_() const;
};

} // namespace Phase

// The registered phase of model T, of the type that the option typeP names.
template <typename T> class PhaseGeneric : public Phase::Generic {
public:
    PhaseGeneric(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                 Persistent* parent, Persistent* root)
        : Generic(defaults, id, persistency, parent, root, std::make_unique<T>()),
          typeP("typeP", "the phase type", retrieveString(defaults, id, persistency, "typeP", "liquid"), this) {
        addVariable(typeP);
        setType(phaseTypeOf(typeP.value()));
    }

    void initializeNonPersistents() override {
        if (NCOMPONENTS < 1) throw ErrorRunTime("PhaseGeneric::initializeNonPersistents", "No components defined");
        model_->initialize(x.value(), rho, mw);
    }

    String typeP;
};

#endif
