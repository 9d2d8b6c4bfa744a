#include <tarvo/core/FlowPatternAscii.h>
#include <tarvo/core/FlowPatterns.h>

namespace {

template <template <int, int> class P, int NX, int NY>
void add(ObjectFactory0<FlowPattern*(), std::string>& factory, const char* name) {
    factory.Register<P<NX, NY>>(std::string(name) + "<" + std::to_string(NX) + "," + std::to_string(NY) + ">");
}

// The grid sizes of the modules that use patterns.
template <template <int, int> class P> void addCommonSizes(ObjectFactory0<FlowPattern*(), std::string>& f, const char* name) {
    add<P, 2, 1>(f, name);
    add<P, 2, 2>(f, name);
    add<P, 3, 2>(f, name);
    add<P, 4, 2>(f, name);
    add<P, 4, 3>(f, name);
    add<P, 8, 3>(f, name);
    add<P, 8, 4>(f, name);
    add<P, 9, 6>(f, name);
    add<P, 10, 5>(f, name);
    add<P, 12, 6>(f, name);
    add<P, 12, 8>(f, name);
    add<P, 16, 12>(f, name);
}

template <template <int, int> class P> void addSquareSizes(ObjectFactory0<FlowPattern*(), std::string>& f, const char* name) {
    add<P, 4, 4>(f, name);
    add<P, 6, 4>(f, name);
    add<P, 6, 6>(f, name);
}

} // namespace

const ObjectFactory0<FlowPattern*(), std::string>& flowPatterns() {
    static const ObjectFactory0<FlowPattern*(), std::string> factory = [] {
        ObjectFactory0<FlowPattern*(), std::string> f;
        addCommonSizes<FlowPatternUp>(f, "FlowPatternUp");
        addCommonSizes<FlowPatternRight>(f, "FlowPatternRight");
        addSquareSizes<FlowPatternUp>(f, "FlowPatternUp");
        addSquareSizes<FlowPatternDown>(f, "FlowPatternDown");
        addSquareSizes<FlowPatternLeft>(f, "FlowPatternLeft");
        addSquareSizes<FlowPatternRight>(f, "FlowPatternRight");
        f.Register<FlowPatternSpiralRight66>("FlowPatternSpiralRight66");
        f.Register<FlowPatternSpiralRight96>("FlowPatternSpiralRight96");
        return f;
    }();
    return factory;
}
