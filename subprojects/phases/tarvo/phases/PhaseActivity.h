#ifndef TARVO_PHASES_PHASEACTIVITY_H
#define TARVO_PHASES_PHASEACTIVITY_H

#include <tarvo/components/ListComponents.h>
#include <tarvo/persistency/QuantityMatrix.h>
#include <tarvo/phases/ActivityNrtl.h>
#include <tarvo/phases/PhaseGeneric.h>

#include <memory>
#include <type_traits>
#include <vector>

// The registered liquid phase of the activity coefficient model T. A phase on an NRTL model keeps the
// model's binary parameters as square items, "B[i][j]" and so on: they start as the process-wide
// parameters when the phase is built, the store keeps them with the case, and a case may set them like
// any quantity. The model takes them from the items when the phase is initialized.
template <typename T> class PhaseActivity : public PhaseGeneric<T> {
public:
    PhaseActivity(const Tarvo::Persistency::Defaults& defaults, uint32_t id, Persistency* persistency,
                  Persistent* parent, Persistent* root)
        : PhaseGeneric<T>(defaults, id, persistency, parent, root) {
        if constexpr (std::is_base_of_v<Phase::Activity::Nrtl, T>) {
            const auto n = static_cast<std::size_t>(NCOMPONENTS);
            for (const Phase::Activity::NrtlParameterArray& a : nrtl_().parameterArrays()) {
                items_.push_back(
                    std::make_unique<QuantityMatrix>(a.tag, a.description, n, n, Value(0.0), this));
                for (std::size_t i = 0; i < n; ++i)
                    for (std::size_t j = 0; j < n; ++j)
                        (*items_.back())(i, j) = (*a.values)[i * n + j];
                this->addVariable(*items_.back());
            }
        }
    }

    void initializeNonPersistents() override {
        PhaseGeneric<T>::initializeNonPersistents();
        if constexpr (std::is_base_of_v<Phase::Activity::Nrtl, T>) {
            const auto n = static_cast<std::size_t>(NCOMPONENTS);
            const std::vector<Phase::Activity::NrtlParameterArray> arrays = nrtl_().parameterArrays();
            for (std::size_t k = 0; k < arrays.size(); ++k)
                for (std::size_t i = 0; i < n; ++i)
                    for (std::size_t j = 0; j < n; ++j)
                        (*arrays[k].values)[i * n + j] = (*items_[k])(i, j).toDouble();
        }
    }

private:
    Phase::Activity::Nrtl& nrtl_() { return dynamic_cast<Phase::Activity::Nrtl&>(*this->model_); }

    std::vector<std::unique_ptr<QuantityMatrix>> items_;
};

#endif
