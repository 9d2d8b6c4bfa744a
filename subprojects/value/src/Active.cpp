#include <tarvo/value/Active.h>

#include <cassert>
#include <cstdio>
#include <sstream>

template <typename V> void GenericActive<V>::severeError() {
    std::printf("severe error: incorrect derivative calculation\n");
    std::fflush(stdout);
    const int numdir = numdir_;
    const bool strict_ro = strict_ro_, active_ = true;
    assert((numdir == 0) || !strict_ro || !active_);
    std::abort(); // reached only when assertions are compiled out
}

template <typename V> void GenericActive<V>::setActive(int i) {
    assert(!strict_ro_ || !active_);
    clearderivatives();
    setDerivative(i, 1);
    ActiveContext::setDirection(i, this);
    active_ = true;
}

template <typename V> void GenericActive<V>::inactivate(int i) {
    active_ = false;
    if (numdir_ > 0) {
        setDerivative(i, 0);
        ActiveContext::setDirection(i, nullptr);
    }
}

template <typename V> V GenericActive<V>::derivative(int i) const {
    if (numdir_ <= ndense) return dense(i);
    const Sparse* list = sparseList();
    return list ? list->derivative(i) : V(0);
}

// Writing in the store of the current mode replaces a store of the other mode, and keeps the other derivatives of
// its own.
template <typename V> void GenericActive<V>::setDerivative(int i, V d) {
    if (numdir_ <= ndense) {
        if (nd_ == sparseStore) releaseSparse();
        for (; nd_ <= i; ++nd_) dense_[nd_] = 0;
        dense_[i] = d;
        return;
    }
    sparse_ = Sparse::set(nd_ == sparseStore ? sparse_ : nullptr, i, d);
    nd_ = sparseStore;
}

template <typename V> V GenericActive<V>::sumAbsoluteDerivatives() const {
    V sum = 0;
    if (numdir_ <= ndense) {
        for (int i = 0; i < nd_; ++i) sum += std::fabs(dense_[i]);
    } else if (const Sparse* list = sparseList()) {
        for (int k = 0; k < list->size(); ++k) sum += std::fabs(list->derivatives()[k]);
    }
    return sum;
}

template <typename V> std::string GenericActive<V>::str() const {
    std::ostringstream out;
    out << v_ << " [ ";
    if (numdir_ > 199) {
        if (const Sparse* list = sparseList())
            for (int k = 0; k < list->size(); ++k)
                out << " (" << list->directions()[k] << ")" << list->derivatives()[k];
    } else {
        for (int i = 0; i < numdir_; ++i) out << derivative(i) << ' ';
    }
    out << " ]";
    return out.str();
}

template class GenericActive<double>;

namespace {

// The contexts stay allocated when popped, so that the push of the next solve of similar size, one per
// Jacobian evaluation, allocates nothing. The bottom context, with no directions, is always there.
std::size_t depth = 1;

} // namespace

std::vector<ActiveContext>& ActiveContext::stack() {
    static std::vector<ActiveContext> contexts{ActiveContext(0)};
    return contexts;
}

ActiveContext& ActiveContext::top() { return stack()[depth - 1]; }

void ActiveContext::push(int numdir) {
    auto& contexts = stack();
    if (depth == contexts.size()) contexts.push_back(ActiveContext(0));
    ActiveContext& context = contexts[depth++];
    context.numdir_ = numdir;
    context.Directions_.assign(numdir, nullptr);
    Active::numdir_ = numdir;
}

void ActiveContext::pop() {
    if (depth > 1) --depth;
    Active::numdir_ = top().numdir_;
}

int ActiveContext::numdir() { return Active::numdir_; }

Active* ActiveContext::direction(int i) { return top().Directions_.at(i); }

void ActiveContext::setDirection(int i, Active* variable) { top().Directions_.at(i) = variable; }

void ActiveContext::dump(std::ostream& out) {
    const auto& top = ActiveContext::top();
    char line[64];
    for (int i = 0; i < top.numdir_; ++i) {
        std::snprintf(line, sizeof line, "Directions_[%d] = ", i);
        out << line << (top.Directions_[i] ? top.Directions_[i]->str() : std::string("null")) << '\n';
    }
}
