#ifndef TARVO_VALUE_ACTIVECONTEXT_H
#define TARVO_VALUE_ACTIVECONTEXT_H

#include <ostream>
#include <vector>

template <typename V> class GenericActive;

// The derivative context: how many independent variables ("directions") the current solve has and
// which object stands for each. Contexts form a process-wide stack; the top one rules. The bottom
// context has no directions, so outside a solve nothing carries derivatives.
class ActiveContext {
public:
    static void push(int numdir);
    static void pop();
    static int numdir();
    // The independent variable of direction i in the top context, or null.
    static GenericActive<double>* direction(int i);
    static void setDirection(int i, GenericActive<double>* variable);
    // "Directions_[i] = <text>" for every direction of the top context.
    static void dump(std::ostream& out);

    // A context pushed for the lifetime of the object: an error thrown while it stands pops it too.
    class Scope {
    public:
        explicit Scope(int numdir) { push(numdir); }
        ~Scope() { pop(); }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;
    };

private:
    explicit ActiveContext(int numdir) : numdir_(numdir), Directions_(numdir, nullptr) {}
    static std::vector<ActiveContext>& stack();
    static ActiveContext& top();

    int numdir_;
    std::vector<GenericActive<double>*> Directions_;
};

#endif
